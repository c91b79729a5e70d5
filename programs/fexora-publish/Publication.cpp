#include "programs/fexora-publish/Publication.h"

#include <cmath>

#include <simdjson.h>

#include "fexora/platform/foundation/NumberText.h"

#include "programs/fexora-publish/Refusal.h"
#include "programs/fexora/JsonText.h"

namespace fexora::publish {
namespace {

namespace dom = simdjson::dom;

constexpr double kDay = 86400;

std::string dayText(Date date) {
  return date.isoText().value_or("").substr(0, 10);
}

std::map<std::string, double> ratesOf(const std::string& published, const std::string& file) {
  std::map<std::string, double> rates;
  dom::parser parser;
  dom::array list;
  if (parser.parse(published)["rates"].get(list) != simdjson::SUCCESS) {
    throw refusal(file + ": the published file holds no rates to compare with; see --force");
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

// Without a division, so that exactly ten percent are not more than ten.
bool isJump(double before, double now, double percent) {
  return !(std::abs(now - before) * 100 <= percent * before);
}

// "eur-reference.xml 2026-09-11", without the folder.
std::string label(const Source& source) {
  const std::string name = source.name.substr(source.name.rfind('/') + 1);  // npos + 1 is 0
  return name + " " + dayText(source.date);
}

}  // namespace

void checkAge(const Options& options, const Source& source, Date today) {
  if (!options.maxAge) return;
  const double days = (today.secondsSince1970() - source.date.secondsSince1970()) / kDay;
  if (days <= *options.maxAge) return;
  throw refusal(source.name + ": its rates of " + dayText(source.date) + " are " +
                shortestText(days) + " days old, more than " + shortestText(*options.maxAge));
}

PublishedRates merge(const std::vector<Source>& sources) {
  PublishedRates rates;
  for (const Source& source : sources) {
    for (const SourceRate& rate : source.rates) {
      rates.try_emplace(
          rate.code, PublishedRate{rate.rate, source.name + ", line " + std::to_string(rate.line)});
    }
  }
  return rates;
}

void checkCount(const Options& options, const PublishedRates& rates) {
  if (rates.empty()) throw refusal("the sources hold no rates");
  if (rates.size() >= options.minCount) return;
  throw refusal("the sources hold " + std::to_string(rates.size()) + " codes, fewer than " +
                std::to_string(options.minCount));
}

void checkJump(const Options& options, const PublishedRates& rates, const std::string& published) {
  for (const auto& [code, before] : ratesOf(published, options.output)) {
    const auto now = rates.find(code);
    if (now == rates.end() || !isJump(before, now->second.rate, *options.maxJump)) continue;
    throw refusal(now->second.from + ", " + code + ": the rate " + shortestText(now->second.rate) +
                  " is more than " + shortestText(*options.maxJump) +
                  " % away from the published " + shortestText(before) + "; see --force");
  }
}

std::string answerText(const std::vector<Source>& sources, const PublishedRates& rates) {
  std::string names;
  for (const Source& source : sources) names += (names.empty() ? "" : ", ") + label(source);
  program::JsonText json;
  json.beginObject().key("serviceMessage").string("");
  json.key("updated").number(sources.front().date.secondsSince1970());
  json.key("source").string(names);
  json.key("count").integer(static_cast<std::int64_t>(rates.size()));
  json.key("rates").beginArray();
  for (const auto& [code, rate] : rates) {
    json.beginObject().key("code").string(code).key("rate").number(rate.rate).endObject();
  }
  return json.endArray().endObject().text() + "\n";
}

}  // namespace fexora::publish
