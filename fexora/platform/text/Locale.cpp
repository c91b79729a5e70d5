#include "fexora/platform/text/Locale.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <initializer_list>
#include <mutex>
#include <set>

#include "fexora/platform/base/Environment.h"
#include "fexora/platform/base/NoDestructor.h"

namespace fexora {
namespace {

// The names that the host ever set stay, so that reading the current one takes no lock.
struct HostLocale {
  std::atomic<const std::string*> name = nullptr;  // one of `names`, or null: the environment's
  std::atomic<std::uint64_t> changes = 0;
  std::mutex mutex;
  std::set<std::string> names;  // under mutex
};

HostLocale& hostLocale() {
  static NoDestructor<HostLocale> locale;
  return *locale;
}

// "de_DE.UTF-8@euro" is "de_DE" to every user of the name.
std::string withoutEncoding(std::string_view name) {
  return std::string(name.substr(0, name.find_first_of(".@")));
}

std::string hostOr(std::initializer_list<const char*> variables) {
  const std::string* const host = hostLocale().name.load(std::memory_order_acquire);
  if (host != nullptr) return *host;
  for (const char* variable : variables) {
    if (const auto value = environment(variable)) return withoutEncoding(*value);
  }
  return "C";
}

}  // namespace

std::string Locale::current() {
  return hostOr({"LC_ALL", "LC_NUMERIC", "LANG"});
}

void Locale::setCurrent(std::string_view name) {
  HostLocale& host = hostLocale();
  const std::lock_guard lock(host.mutex);
  const std::string known = withoutEncoding(name);
  host.name.store(known.empty() ? nullptr : &*host.names.insert(known).first,
                  std::memory_order_release);
  host.changes.fetch_add(1, std::memory_order_release);
}

std::uint64_t Locale::changes() noexcept {
  return hostLocale().changes.load(std::memory_order_acquire);
}

std::string Locale::currentLanguage() {
  return hostOr({"LC_ALL", "LC_MESSAGES", "LANG"});
}

bool Locale::hasPlainNumbers(std::string_view name) noexcept {
  // Each amount that is read asks this: the usual names are told without a call.
  const bool isEnglish = name.size() == 5 && name[0] == 'e' && name[1] == 'n' && name[2] == '_';
  if (!isEnglish) {
    return name.empty() || name == "C" || name == "en" || (name[0] == 'P' && name == "POSIX");
  }
  // Only the regions whose English numbers were compared with the plain form; India groups by two
  // and South Africa writes a comma, so they are not among them.
  constexpr std::array<std::string_view, 9> kRegions = {"US", "GB", "AU", "CA", "IE",
                                                        "NZ", "SG", "HK", "PH"};
  const std::string_view region = name.substr(3);
  return std::any_of(kRegions.begin(), kRegions.end(), [region](std::string_view one) {
    return one[0] == region[0] && one[1] == region[1];
  });
}

}  // namespace fexora
