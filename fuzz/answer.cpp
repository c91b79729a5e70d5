// The rates service's answer: decoded, mapped, filtered by the catalogue, and derived to pairs.
#include <algorithm>
#include <vector>

#include "fexora/catalogue/CurrencyManager.h"
#include "fexora/input/Response.h"
#include "fexora/platform/foundation/Log.h"
#include "fexora/platform/mapping/Mapper.h"
#include "fexora/platform/modules/net/JsonDocument.h"
#include "fexora/platform/plist/PropertyListWriter.h"
#include "fexora/rates/PairRates.h"

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
void checkSaving(const std::vector<USDRateRef>& rates) {
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

// What takes the fast way through the text, or the slow one when it must.
std::shared_ptr<Response> read(const JsonDocument& document) {
  const MapSource* object = document.object();
  return object != nullptr ? Mapper<Response>::map(*object) : nullptr;
}

void checkDocument(const JsonDocument& document, const JsonResult& json, const Response* response) {
  require(document.state() == json.state && document.reason() == json.reason,
          "both readers take and refuse the same texts");
  const auto read = fuzz::read(document);
  require((read != nullptr) == (response != nullptr), "both readers find the same root");
  if (read == nullptr) return;
  require(test::describe(Mapper<Response>::toJSON(*read)) ==
              test::describe(Mapper<Response>::toJSON(*response)),
          "both readers find the same content");
}

void run(std::string_view text) {
  const JsonResult json = decodeJson(text);
  const bool isValue = json.state == JsonResult::State::value;
  require(json.reason.empty() == isValue, "a refusal has a reason, a value none");
  require(isValue || json.root.isNull(), "a refusal has no value");
  const auto response = Mapper<Response>::map(json.root);
  require((response != nullptr) == (json.root.dictionary() != nullptr), "an object is an answer");
  checkDocument(JsonDocument(text), json, response.get());
  if (response == nullptr) return;
  checkMapping(*response);
  checkSaving(response->rates());
  checkPairs(response->rates());
}

}  // namespace
}  // namespace fexora::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fexora::fuzz::run(fexora::fuzz::textOf(data, size));
  return 0;
}
