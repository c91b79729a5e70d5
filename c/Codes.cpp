#include "c/Codes.h"

#include <algorithm>

#include "fexora/catalogue/CurrencyNames.h"
#include "fexora/catalogue/NearCurrencies.h"
#include "fexora/platform/Platform.h"
#include "fexora/platform/base/NoDestructor.h"
#include "fexora/platform/text/AsciiCase.h"

namespace fexora::c {
namespace {

constexpr std::size_t kPacked = 8;
constexpr std::size_t kOffered = 3;
constexpr std::size_t kQuotedBytes = 60;

// The upper-case code in one number; a short one ends with zeros, which no code has.
std::uint64_t packed(std::string_view code) noexcept {
  std::uint64_t key = 0;
  for (const char c : code) key = key << 8 | static_cast<unsigned char>(ascii::upper(c));
  return key;
}

// Fibonacci hashing: the high bits of a product with 2^64 ÷ φ.
std::size_t slotOf(std::uint64_t key, std::size_t slots) noexcept {
  return static_cast<std::size_t>((key * 0x9E3779B97F4A7C15U) >> 32) & (slots - 1);
}

std::string near(std::string_view typed) {
  std::string text;
  for (const CurrencyRef& one : nearCurrencies(searchedCatalogue(), typed, kOffered)) {
    text += (text.empty() ? "; near: " : ", ") + one->code();
  }
  return text;
}

// Names whose strings are the process's language's, whatever a host of the process has set.
Platform searchedPlatform() {
  static NoDestructor<CurrencyNames> names;
  Platform platform = Platform::process();
  platform.strings = &*names;
  return platform;
}

}  // namespace

const CurrencyManager& searchedCatalogue() {
  static NoDestructor<Platform> platform(searchedPlatform());
  static NoDestructor<CurrencyManager> catalogue(*platform);
  return *catalogue;
}

const Codes& Codes::all() {
  static NoDestructor<Codes> codes(Codes{currencyManager()});
  return *codes;
}

Codes::Codes(const CurrencyManager& catalogue) : records_(catalogue.currencies()) {
  codes_.reserve(records_.size());
  for (const CurrencyRef& record : records_) codes_.push_back(record->code());
  std::size_t slots = 16;
  while (slots < records_.size() * 4) slots *= 2;
  slots_.resize(slots);
  for (std::uint32_t place = 0; place < codes_.size(); ++place) {
    if (codes_[place].size() > kPacked) continue;
    const std::uint64_t key = packed(codes_[place]);
    std::size_t at = slotOf(key, slots);
    // Of two records with one code the first counts.
    while (slots_[at].place != kNone && slots_[at].key != key) at = (at + 1) & (slots - 1);
    if (slots_[at].place == kNone) slots_[at] = {key, place};
  }
}

std::uint32_t Codes::longPlace(std::string_view code) const noexcept {
  const auto at = std::find_if(codes_.begin(), codes_.end(), [&](const std::string& one) {
    return std::equal(one.begin(), one.end(), code.begin(), code.end(),
                      [](char a, char b) { return a == ascii::upper(b); });
  });
  return at != codes_.end() ? static_cast<std::uint32_t>(at - codes_.begin()) : kNone;
}

std::uint32_t Codes::place(std::string_view code) const noexcept {
  if (code.size() > kPacked) return longPlace(code);
  if (code.empty() || code == "GBp") return kNone;
  const std::uint64_t key = packed(code);
  for (std::size_t at = slotOf(key, slots_.size());; at = (at + 1) & (slots_.size() - 1)) {
    if (slots_[at].place == kNone || slots_[at].key == key) return slots_[at].place;
  }
}

Outcome Codes::find(const char* code, std::uint32_t& place) const {
  if (code == nullptr) return misuse("no code is given");
  const std::string_view typed = code;
  const std::uint32_t found = this->place(typed);
  if (found == kNone) {
    if (typed == "GBp") {
      return {FEXORA_NO_CURRENCY,
              "GBp are hundredths of GBP, which take a hundredth of the amount"};
    }
    const bool isLong = typed.size() > kQuotedBytes;
    std::string quoted(kQuotedBytes + 1, '\0');
    putText(typed, quoted.data(), quoted.size());
    quoted.resize(quoted.find('\0'));
    return {FEXORA_NO_CURRENCY, "there is no currency \"" + quoted + (isLong ? "…" : "") +
                                    "\"; expected a code like USD" + (isLong ? "" : near(typed))};
  }
  place = found;
  return {};
}

}  // namespace fexora::c
