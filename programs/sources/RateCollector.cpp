#include <algorithm>
#include <cmath>

#include "fexora/platform/text/AsciiCase.h"
#include "fexora/platform/text/NumberText.h"
#include "fexora/rates/AnswerCheck.h"

#include "programs/sources/Source.h"
#include "programs/sources/SourceText.h"

namespace fexora::sources {
namespace {

constexpr std::size_t kCodeLength = 32;

bool isCodeCharacter(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

}  // namespace

void RateCollector::reject(std::size_t line, std::string_view code, const std::string& what) const {
  std::string message = source_.name;
  if (line > 0) message.append(", line ").append(std::to_string(line));
  if (!code.empty()) message.append(", ").append(code.substr(0, kCodeLength));
  throw SourceProblem{message + ": " + what};
}

double RateCollector::number(std::size_t line, std::string_view code, std::string_view text) const {
  const auto number = parseDouble(text);
  if (!number)
    reject(line, code, "\"" + std::string(text.substr(0, kShownBytes)) + "\" is no number");
  return *number;
}

bool RateCollector::isCode(std::string_view code) {
  return !code.empty() && code.size() <= kCodeLength &&
         std::all_of(code.begin(), code.end(), isCodeCharacter);
}

void RateCollector::add(std::size_t line, std::string_view code, double rate,
                        std::string_view figure) {
  if (!isCode(code)) reject(line, code, "this is no currency code");
  source_.rates.push_back({ascii::uppercased(code), rate, std::string(figure), line});
  checkRate(source_.rates.back());
}

void RateCollector::checkRate(const SourceRate& rate) const {
  if (std::isfinite(rate.rate) && rate.rate > 0 && std::isfinite(1 / rate.rate)) return;
  reject(rate.line, rate.code,
         "the rate " + shortestText(rate.rate) + " or its reciprocal is not finite and positive");
}

void RateCollector::setDate(std::size_t line, std::string_view day) {
  const auto date = Date::fromIsoText(std::string(day) + "T00:00:00Z");
  if (!date) reject(line, {}, "\"" + std::string(day.substr(0, kShownBytes)) + "\" is no date");
  source_.date = *date;
  source_.isDated = true;
}

void RateCollector::setMoment(Date moment) {
  source_.date = moment;
  source_.isDated = true;
}

void RateCollector::setBase(std::size_t line, std::string_view code) {
  if (!isCode(code)) reject(line, {}, "its base is no currency code");
  const std::string base = ascii::uppercased(code);
  if (hasBase_ && base != source_.base) {
    reject(line, code, "it is said to be of one " + source_.base + ", too");
  }
  source_.base = base;
  hasBase_ = true;
}

const SourceRate* RateCollector::find(std::string_view code) const {
  const auto at = std::find_if(source_.rates.begin(), source_.rates.end(),
                               [&](const SourceRate& rate) { return rate.code == code; });
  return at != source_.rates.end() ? &*at : nullptr;
}

void RateCollector::rejectRepeated() {
  auto& rates = source_.rates;
  std::stable_sort(rates.begin(), rates.end(),
                   [](const SourceRate& a, const SourceRate& b) { return a.code < b.code; });
  const auto twice =
      std::adjacent_find(rates.begin(), rates.end(),
                         [](const SourceRate& a, const SourceRate& b) { return a.code == b.code; });
  if (twice == rates.end()) return;
  reject(twice[1].line, twice->code, "line " + std::to_string(twice->line) + " has it already");
}

// A table of another base is known by its own rate. Of one or two currencies that are 1 nothing
// can be told.
std::string RateCollector::ownBase() const {
  const SourceRate* const dollar = find("USD");
  if (dollar != nullptr && dollar->rate == 1) return "USD";
  std::string base;
  for (const std::string_view code : mostTradedCodes()) {
    const SourceRate* const rate = find(code);
    if (rate == nullptr || rate->rate != 1) continue;
    if (!base.empty()) return "USD";
    base = code;
  }
  return base.empty() || source_.rates.size() == 1 ? "USD" : base;
}

void RateCollector::turnToDollars() {
  const SourceRate* const dollar = find("USD");
  if (dollar == nullptr) {
    throw SourceProblem{source_.name + ": it has no USD rate (\"usd\"), so its rates of one " +
                        source_.base + " cannot be turned to dollars"};
  }
  const double divisor = dollar->rate;
  for (SourceRate& rate : source_.rates) {
    rate.rate /= divisor;
    checkRate(rate);
  }
}

Source RateCollector::finish() && {
  rejectRepeated();
  if (source_.rates.empty()) return std::move(source_);
  if (!hasBase_) source_.base = ownBase();
  const SourceRate* const own = find(source_.base);
  if (own != nullptr && own->rate != 1) {
    reject(own->line, own->code,
           source_.base == "USD" ? "the dollar's own rate is not 1" : "its own rate is not 1");
  }
  if (own == nullptr) {
    source_.rates.push_back({source_.base, 1, "1", 0});
    rejectRepeated();  // puts it into its place
  }
  if (source_.base != "USD") turnToDollars();
  return std::move(source_);
}

}  // namespace fexora::sources
