#include "programs/fexora-publish/Publication.h"

#include <cmath>

#include <simdjson.h>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/text/NumberText.h"

#include "programs/fexora-publish/Rejection.h"
#include "programs/shared/JsonText.h"

namespace fexora::publish {
namespace {

namespace dom = simdjson::dom;

constexpr double kDay = 86400;

// The answer has three values for each, and six others.
constexpr auto kMostCodes = static_cast<std::int64_t>((limits::kJsonValues - 6) / 3);

std::map<std::string, double> ratesOf(const std::string& published, const std::string& file) {
  std::map<std::string, double> rates;
  dom::parser parser;
  dom::array list;
  if (parser.parse(published)["rates"].get(list) != simdjson::SUCCESS) {
    throw rejection(file + ": the published file holds no rates to compare with; see --force");
  }
  for (const dom::element element : list) {
    std::string_view code;
    double rate = 0;
    if (element["code"].get(code) == simdjson::SUCCESS &&
        element["rate"].get(rate) == simdjson::SUCCESS) {
      rates.emplace(code, rate);
    }
  }
  return rates;
}

// Without a division, which would round once more; and with both scaled by one power of two, which
// changes no digit: the limit stays finite then, and a change that does not is a jump.
bool isJump(double before, double now, double percent) {
  int exponent = 0;
  const double from = std::frexp(before, &exponent);
  return !(std::abs(std::ldexp(now, -exponent) - from) * 100 <= percent * from);
}

}  // namespace

void checkAge(const Options& options, const Source& source, Date today) {
  const double days = (today.secondsSince1970() - source.date.secondsSince1970()) / kDay;
  const std::string rates = source.name + ": its rates of " + sources::dayText(source.date);
  // Somewhere it is tomorrow already.
  if (days < -1) throw rejection(rates + " lie in the future");
  if (!options.maxAge || days <= *options.maxAge) return;
  throw rejection(rates + " are " + shortestText(days) + " days old, more than " +
                  shortestText(*options.maxAge));
}

void checkCount(const Options& options, const MergedRates& rates) {
  if (rates.empty()) throw rejection("the sources hold no rates");
  const auto count = static_cast<std::int64_t>(rates.size());
  const std::int64_t fewest = options.minCount.value_or(1);
  if (count >= fewest && count <= kMostCodes) return;
  throw rejection("the sources hold " + std::to_string(count) + " codes, " +
                  (count < fewest ? "fewer than " + std::to_string(fewest)
                                  : "more than the library reads, " + std::to_string(kMostCodes)));
}

void checkJump(const Options& options, const MergedRates& rates, const std::string& published) {
  for (const auto& [code, before] : ratesOf(published, options.output)) {
    const auto now = rates.find(code);
    if (now == rates.end() || !isJump(before, now->second.rate, *options.maxJump)) continue;
    const sources::MergedRate& rate = now->second;
    throw rejection(*rate.source + ", line " + std::to_string(rate.line) + ", " + code +
                    ": the rate " + shortestText(rate.rate) + " is more than " +
                    shortestText(*options.maxJump) + " % away from the published " +
                    shortestText(before) + "; see --force");
  }
}

std::string answerText(const std::vector<Source>& sources, const MergedRates& rates) {
  program::JsonText json;
  json.beginObject().key("serviceMessage").string("");
  json.key("updated").number(sources.front().date.secondsSince1970());
  json.key("source").string(sources::namesOf(sources));
  json.key("count").integer(static_cast<std::int64_t>(rates.size()));
  json.key("rates").beginArray();
  for (const auto& [code, rate] : rates) {
    json.beginObject().key("code").string(code).key("rate").number(rate.rate).endObject();
  }
  return json.endArray().endObject().text() + "\n";
}

}  // namespace fexora::publish
