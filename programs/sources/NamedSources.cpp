#include "programs/sources/NamedSources.h"

#include <algorithm>
#include <array>

#include "fexora/platform/base/Environment.h"

namespace fexora::sources {
namespace {

constexpr std::array<NamedSource, 2> kSources = {{
    {"exchange-api", "Fawaz Ahmed, from public markets", "dollar JSON", "USD",
     "some 340 codes: official, metals, crypto", "daily, shortly after midnight UTC",
     "no licence stated; offered for any use",
     "https://cdn.jsdelivr.net/npm/@fawazahmed0/currency-api@latest/v1/currencies/usd.min.json "
     "https://latest.currency-api.pages.dev/v1/currencies/usd.min.json",
     "FEXORA_SOURCES_EXCHANGE_API"},
    {"ecb", "European Central Bank", "euro reference XML", "EUR", "some thirty currencies",
     "working days about 16:00 Central European Time", "free, with the source named",
     "https://www.ecb.europa.eu/stats/eurofxref/eurofxref-daily.xml", "FEXORA_SOURCES_ECB"},
}};

std::vector<std::string> wordsOf(std::string_view text) {
  std::vector<std::string> words;
  while (!text.empty()) {
    const auto end = std::min(text.find(' '), text.size());
    if (end > 0) words.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return words;
}

std::string_view hostOf(std::string_view address) {
  const auto scheme = address.find("://");
  if (scheme != std::string_view::npos) address.remove_prefix(scheme + 3);
  address = address.substr(0, address.find_first_of("/?#"));
  address.remove_prefix(address.rfind('@') + 1);  // npos + 1 is 0
  return address.substr(0, address.find(':'));
}

}  // namespace

std::span<const NamedSource> namedSources() {
  return kSources;
}

const NamedSource* namedSource(std::string_view name) {
  const auto* const at = std::find_if(kSources.begin(), kSources.end(),
                                      [&](const NamedSource& each) { return each.name == name; });
  return at != kSources.end() ? at : nullptr;
}

bool isConfigured(std::string_view serviceAddress) {
  return !serviceAddress.empty() && !hostOf(serviceAddress).ends_with(".example");
}

SourceStep stepFor(std::string_view name, const std::string& serviceAddress) {
  if (name == kService) return {std::string(name), {serviceAddress}, true};
  const NamedSource* const source = namedSource(name);
  if (source == nullptr) return {std::string(name), {}};
  const auto others = environment(source->variable);
  return {std::string(name), wordsOf(others ? std::string_view(*others) : source->addresses)};
}

std::vector<SourceStep> stepsFor(std::string_view setting, const std::string& serviceAddress) {
  std::vector<SourceStep> steps;
  if (setting.empty() || setting == kAutomatic) {
    if (isConfigured(serviceAddress)) return {stepFor(kService, serviceAddress)};
    for (const NamedSource& source : kSources) {
      steps.push_back(stepFor(source.name, serviceAddress));
    }
  } else if (setting == kService || namedSource(setting) != nullptr) {
    steps.push_back(stepFor(setting, serviceAddress));
  }
  return steps;
}

std::vector<std::string> settingChoices() {
  std::vector<std::string> choices = {std::string(kAutomatic)};
  for (const NamedSource& source : kSources) choices.emplace_back(source.name);
  choices.emplace_back(kService);
  choices.emplace_back(kNowhere);
  return choices;
}

}  // namespace fexora::sources
