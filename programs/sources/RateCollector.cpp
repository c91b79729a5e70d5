#include <algorithm>
#include <cmath>

#include "fexora/platform/text/NumberText.h"

#include "programs/sources/Source.h"

namespace fexora::sources {
namespace {

constexpr std::size_t kCodeLength = 32;

bool isCodeCharacter(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

std::string upperCase(std::string_view code) {
  std::string upper(code);
  for (char& c : upper) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return upper;
}

}  // namespace

void RateCollector::reject(std::size_t line, std::string_view code, const std::string& what) const {
  std::string message = source_.name + ", line " + std::to_string(line);
  if (!code.empty()) message.append(", ").append(code.substr(0, kCodeLength));
  throw SourceProblem{message + ": " + what};
}

double RateCollector::number(std::size_t line, std::string_view code, std::string_view text) const {
  const auto number = parseDouble(text);
  if (!number) reject(line, code, "\"" + std::string(text.substr(0, 40)) + "\" is no number");
  return *number;
}

void RateCollector::add(std::size_t line, std::string_view code, double rate) {
  if (code.empty() || code.size() > kCodeLength ||
      !std::all_of(code.begin(), code.end(), isCodeCharacter)) {
    reject(line, code, "this is no currency code");
  }
  source_.rates.push_back({upperCase(code), rate, line});
  checkRate(source_.rates.back());
}

void RateCollector::checkRate(const SourceRate& rate) const {
  if (std::isfinite(rate.rate) && rate.rate > 0 && std::isfinite(1 / rate.rate)) return;
  reject(rate.line, rate.code,
         "the rate " + shortestText(rate.rate) + " or its reciprocal is not finite and positive");
}

void RateCollector::setDate(std::size_t line, std::string_view day) {
  const auto date = Date::fromIsoText(std::string(day) + "T00:00:00Z");
  if (!date) reject(line, {}, "\"" + std::string(day.substr(0, 40)) + "\" is no date");
  source_.date = *date;
  hasDate_ = true;
}

void RateCollector::setMoment(Date moment) {
  source_.date = moment;
  hasDate_ = true;
}

void RateCollector::divideBy(double divisor) {
  for (SourceRate& rate : source_.rates) {
    rate.rate /= divisor;
    checkRate(rate);
  }
}

const SourceRate* RateCollector::find(std::string_view code) const {
  const auto at = std::find_if(source_.rates.begin(), source_.rates.end(),
                               [&](const SourceRate& rate) { return rate.code == code; });
  return at != source_.rates.end() ? &*at : nullptr;
}

Source RateCollector::finish() && {
  auto& rates = source_.rates;
  std::stable_sort(rates.begin(), rates.end(),
                   [](const SourceRate& a, const SourceRate& b) { return a.code < b.code; });
  const auto twice =
      std::adjacent_find(rates.begin(), rates.end(),
                         [](const SourceRate& a, const SourceRate& b) { return a.code == b.code; });
  if (twice != rates.end()) {
    reject(twice[1].line, twice->code, "line " + std::to_string(twice->line) + " has it already");
  }
  const SourceRate* dollar = find("USD");
  if (dollar != nullptr && dollar->rate != 1) {
    reject(dollar->line, dollar->code, "the dollar's own rate is not 1");
  }
  return std::move(source_);
}

}  // namespace fexora::sources
