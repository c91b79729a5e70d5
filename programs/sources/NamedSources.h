// The sources of rates that have a name: where they are asked, what they hold, who publishes them.
//
// Looked up in public texts on 25 November 2026: ecb on the bank's page "Euro foreign exchange
// reference rates" (www.ecb.europa.eu/stats/policy_and_exchange_rates) and its page of terms
// ("Disclaimer & copyright": free use, with the source named); exchange-api in the README of
// the repository fawazahmed0/exchange-api, which asks for the second address where the first fails,
// and in the entry of its package, which names no licence.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace fexora::sources {

struct NamedSource {
  std::string_view name;
  std::string_view publisher;
  std::string_view form;  // what it sends
  std::string_view base;  // what it quotes against
  std::string_view covers;
  std::string_view changes;  // how often
  std::string_view terms;
  std::string_view addresses;  // in order of trial, parted by blanks; https all of them
  const char* variable;        // of the environment, that names other addresses
};

// In the order in which they are asked where no service is configured.
std::span<const NamedSource> namedSources();
// Null when nobody is called so.
const NamedSource* namedSource(std::string_view name);

// What the setting "ratesFrom" may be beside the names of sources.
inline constexpr std::string_view kAutomatic = "automatic";
inline constexpr std::string_view kService = "service";
inline constexpr std::string_view kNowhere = "nowhere";

// One source to ask, at each address until one answers.
struct SourceStep {
  std::string name;
  std::vector<std::string> addresses;
  bool isService = false;  // whose address may be of any kind
};

// Whether somebody has named a rates service: what is in the reserved domain "example" is nobody's.
bool isConfigured(std::string_view serviceAddress);
// The step of one name, "service" included; without addresses where there is none.
SourceStep stepFor(std::string_view name, const std::string& serviceAddress);
// Whom to ask by the setting, one after the other until one answers: a configured service, else the
// named sources; nobody for "nowhere" and for what is no name.
std::vector<SourceStep> stepsFor(std::string_view setting, const std::string& serviceAddress);
// All that the setting may be, in the order to offer it.
std::vector<std::string> settingChoices();

}  // namespace fexora::sources
