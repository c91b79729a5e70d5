// The rates service's answer: decoded, mapped, filtered by the catalogue, and derived to pairs.
#include <algorithm>
#include <vector>

#include "fexora/catalogue/CurrencyManager.h"
#include "fexora/platform/base/Log.h"
#include "fexora/platform/json/simdjson/JsonDocument.h"
#include "fexora/platform/json/simdjson/JsonScan.h"
#include "fexora/platform/mapping/Mapper.h"
#include "fexora/platform/plist/PropertyListWriter.h"
#include "fexora/rates/PairRates.h"
#include "fexora/records/Response.h"
#include "fexora/store/RatesAnswer.h"

#include "fuzz/Target.h"
#include "tests/support/Describe.h"

namespace fexora::fuzz {
namespace {

const CurrencyManager& catalogue() {
  Log::setProcessSink([](std::string_view) {});  // of a missing resource file
  return currencyManager();
}

void checkMapping(const Response& response) {
  const Value json = Mapper<Response>::toJSON(response);
  const auto again = Mapper<Response>::map(json);
  require(again != nullptr, "what a record gives as JSON maps again");
  require(test::describe(Mapper<Response>::toJSON(*again)) == test::describe(json),
          "a record is the same after JSON and back");
}

// What of the answer goes into the store can always be written.
void checkSaving(const Response& response) {
  const std::vector<USDRateRef>& rates = response.rates();
  const RatesAnswer said{response.published(), response.source()};
  require(writePropertyList(said.keptWith(Date(0))).ok(), "what it says of itself can be saved");
  std::vector<USDRateRef> kept;
  for (const auto& rate : rates) {
    require(rate != nullptr, "a mapped list has no null references");
    if (catalogue().hasCurrency(rate->code())) kept.push_back(rate);
  }
  require(writePropertyList(Mapper<USDRate>::toJSONArray(kept)).ok(), "known rates can be saved");
}

void checkPairs(const std::vector<USDRateRef>& rates) {
  const PairRates pairs(catalogue(), knownRates(catalogue(), rates), catalogue().currencies());
  constexpr std::size_t kMost = 64;
  for (std::size_t i = 0; i < std::min(pairs.size(), kMost); ++i) {
    const Rate pair = pairs[i];
    const auto first = pairs.find(*pair.src(), *pair.dst());
    require(first.has_value(), "a pair that is listed is found");
    const auto items = pairs.convert(*pair.src(), 1.0, i % 2 == 0);
    require(!items.empty(), "a source that has a pair converts to something");
  }
}

// The scan may only make numbers fit that would not.
void checkScan(std::string_view text, const JsonDocument& document) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  const JsonScan scan = scanJson(text);
  // A second mark is a fault, which must not become a first one.
  const JsonDocument again(std::string(kByteOrderMark) + scan.text);
  require(again.state() == document.state(), "a scan makes no JSON of a fault, nor the reverse");
  require(scanJson(scan.text).values == scan.values, "a scan changes no count");
  if (document.state() != JsonDocument::State::value) return;
  require(document.state() == JsonDocument(text, scan.values).state(), "the count is enough");
  require(JsonDocument(text, scan.values - 1).state() == JsonDocument::State::tooLarge ||
              text.size() / 2 < scan.values - 1,
          "and no more than enough");
}

void run(std::string_view text) {
  const JsonDocument document(text);
  require(document.reason().empty() == (document.state() == JsonDocument::State::value),
          "a rejection has a reason, a value none");
  checkScan(text, document);
  const MapSource* object = document.object();
  const auto response = object != nullptr ? Mapper<Response>::map(*object) : nullptr;
  require((response != nullptr) == (object != nullptr), "an object is an answer");
  if (response == nullptr) return;
  checkMapping(*response);
  checkSaving(*response);
  checkPairs(response->rates());
}

}  // namespace
}  // namespace fexora::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fexora::fuzz::run(fexora::fuzz::textOf(data, size));
  return 0;
}
