#include "programs/fexora-publish/Publication.h"

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/text/NumberText.h"

#include "programs/fexora-publish/Rejection.h"
#include "programs/shared/JsonText.h"

namespace fexora::publish {
namespace {

constexpr double kDay = 86400;

// The answer has three values for each, and six others.
constexpr auto kMostCodes = static_cast<std::int64_t>((limits::kJsonValues - 6) / 3);

}  // namespace

void checkAge(const Options& options, const Source& source, Date today) {
  const double days = (today.secondsSince1970() - source.date.secondsSince1970()) / kDay;
  const std::string rates = source.name + ": its rates of " + sources::dayText(source.date);
  // Somewhere it is tomorrow already.
  if (days < -1) throw rejection(rates + " lie in the future");
  if (!options.maxAge || days <= *options.maxAge) return;
  throw rejection(rates + " are " + shortestText(days) + (days == 1 ? " day" : " days") +
                  " old, more than " + shortestText(*options.maxAge));
}

void checkCount(const Options& options, const MergedRates& rates) {
  if (rates.empty()) throw rejection("the sources hold no rates");
  const auto count = static_cast<std::int64_t>(rates.size());
  const std::int64_t fewest = options.minCount.value_or(1);
  if (count >= fewest && count <= kMostCodes) return;
  throw rejection("the sources hold " + std::to_string(count) +
                  (count == 1 ? " code, " : " codes, ") +
                  (count < fewest ? "fewer than " + std::to_string(fewest)
                                  : "more than the library reads, " + std::to_string(kMostCodes)));
}

namespace {

HeldRates heldOf(const std::string& published, const std::string& file, Date today) {
  RatesTable table;
  try {
    table = sources::tableOf(sources::readText(file, published, Date()), RatesAnswer::Origin::file);
  } catch (const sources::SourceProblem& problem) {
    throw rejection(problem.message + "; it cannot be compared with; see --force");
  }
  return {table.rates, table.published, today};
}

Response answerOf(const std::vector<Source>& sources, const MergedRates& rates) {
  Response answer;
  answer.setUpdated(sources.front().date.secondsSince1970());
  std::vector<USDRateRef> list;
  for (const auto& [code, rate] : rates) list.push_back(USDRate::make(rate.rate, code));
  answer.setRates(std::move(list));
  return answer;
}

// Names source and line where there is one code to blame.
std::string textOf(const RatesReason& reason, const MergedRates& rates, double percent) {
  const auto at = rates.find(reason.code);
  if (reason.kind != RatesReason::Kind::moved || at == rates.end()) {
    return "the rates look wrong: " + reason.sentence() + "; see --force";
  }
  const sources::MergedRate& rate = at->second;
  return *rate.source + (rate.line > 0 ? ", line " + std::to_string(rate.line) : "") + ", " +
         reason.code + ": the rate " + shortestText(reason.now) + " is more than " +
         shortestText(percent) + " % away from the published " + shortestText(reason.before) +
         "; see --force";
}

}  // namespace

void checkChange(const Options& options, const std::vector<Source>& sources,
                 const MergedRates& rates, const std::string& published, Date today) {
  PlausibleLimits limits;
  limits.officialMove = *options.maxJump / 100;
  limits.mayLackOfficial = false;
  const AnswerVerdict verdict =
      plausible(limits)(answerOf(sources, rates), heldOf(published, options.output, today));
  if (verdict.against) throw rejection(textOf(*verdict.against, rates, *options.maxJump));
  if (verdict.leftOut.empty()) return;
  throw rejection(textOf(verdict.leftOut.front(), rates, *options.maxJump));
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
