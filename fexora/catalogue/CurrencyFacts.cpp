#include "fexora/catalogue/CurrencyFacts.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <list>
#include <map>
#include <mutex>
#include <shared_mutex>
#include <string>

#include "fexora/catalogue/CurrencyFactsTable.h"
#include "fexora/platform/base/Guarded.h"
#include "fexora/platform/base/Limits.h"
#include "fexora/platform/base/NoDestructor.h"
#include "fexora/platform/text/NumberText.h"
#include "fexora/platform/text/TakeUntil.h"

namespace fexora {
namespace {

double number(std::string_view cell) noexcept {
  return parseDouble(cell).value_or(0.0);
}

std::optional<int> digitsOf(std::string_view cell) noexcept {
  const auto digits = parseInteger(cell);
  return digits ? std::optional<int>(static_cast<int>(*digits)) : std::nullopt;
}

CurrencyKind kindOf(std::string_view cell) noexcept {
  if (cell == "local") return CurrencyKind::local;
  if (cell == "metal") return CurrencyKind::metal;
  if (cell == "crypto") return CurrencyKind::crypto;
  return cell == "withdrawn" ? CurrencyKind::withdrawn : CurrencyKind::official;
}

CurrencyFacts factsOf(std::string_view rest) noexcept {
  const auto cell = [&rest] { return takeUntil(rest, '\t'); };
  CurrencyFacts facts;
  facts.code = cell();
  facts.kind = kindOf(cell());
  facts.digits = digitsOf(cell());
  facts.customaryDigits = digitsOf(cell());
  facts.cashStep = number(cell());
  facts.cashHalfDown = cell() == "half-down";
  facts.signs = WordList(cell());
  facts.regions = WordList(cell());
  facts.successor = cell();
  facts.units = number(cell());
  facts.successorUnits = number(cell());
  facts.replaced = cell();
  facts.lastDay = cell();
  facts.ratioSince = cell();
  return facts;
}

// A built-in row, made at its first look-up, in place: whoever asks for none pays nothing.
struct Row {
  std::once_flag made;
  CurrencyFacts facts;
};
constinit std::array<Row, kCurrencyFactsRows> builtinRows{};

std::string_view line(std::size_t place) noexcept {
  std::string_view rest = kCurrencyFactsTable.substr(kCurrencyFactsStarts[place]);
  return takeUntil(rest, '\n');
}

const CurrencyFacts& builtinFacts(std::size_t place) noexcept {
  Row& row = builtinRows[place];
  std::call_once(row.made, [&] { row.facts = factsOf(line(place)); });
  return row.facts;
}

const CurrencyFacts* builtinFacts(std::string_view code) noexcept {
  const auto codeAt = [](std::uint16_t start) {
    std::string_view rest = kCurrencyFactsTable.substr(start);
    return takeUntil(rest, '\t');
  };
  const auto& starts = kCurrencyFactsStarts;
  const auto at = std::lower_bound(
      starts.begin(), starts.end(), code,
      [&](std::uint16_t start, std::string_view of) { return codeAt(start) < of; });
  if (at == starts.end() || codeAt(*at) != code) return nullptr;
  return &builtinFacts(static_cast<std::size_t>(at - starts.begin()));
}

bool isAmount(double value) noexcept {
  return std::isfinite(value) && value >= 0.0;
}

bool isUsable(const CurrencyFacts& row) noexcept {
  const auto isCount = [](const std::optional<int>& digits) {
    return !digits || (*digits >= 0 && *digits <= limits::kFractionDigits);
  };
  const bool numbers =
      isAmount(row.cashStep) && isAmount(row.units) && isAmount(row.successorUnits);
  const bool ratio =
      row.hasRatio() ? !row.successor.empty() : row.units == 0.0 && row.successorUnits == 0.0;
  return !row.code.empty() && numbers && ratio && isCount(row.digits) &&
         isCount(row.customaryDigits);
}

// What hosts have added.
class Added {
 public:
  void add(std::span<const CurrencyFacts> rows) {
    std::list<std::string> texts;
    std::list<CurrencyFacts> kept;
    for (const CurrencyFacts& row : rows) kept.push_back(copied(row, texts));
    const std::lock_guard lock(mutex_);
    // Places first: from then on nothing can fail.
    for (const CurrencyFacts& row : kept) latest_.try_emplace(std::string(row.code), nullptr);
    for (const CurrencyFacts& row : kept) latest_.find(row.code)->second = &row;
    texts_.splice(texts_.end(), texts);
    rows_.splice(rows_.end(), kept);
    changes_.fetch_add(1, std::memory_order_release);
  }

  std::uint64_t changes() const noexcept { return changes_.load(std::memory_order_acquire); }

  const CurrencyFacts* find(std::string_view code) const noexcept {
    if (changes() == 0) return nullptr;
    const std::shared_lock lock(mutex_);
    const auto at = latest_.find(code);
    return at != latest_.end() ? at->second : nullptr;
  }

  std::vector<const CurrencyFacts*> all() const {
    const std::shared_lock lock(mutex_);
    std::vector<const CurrencyFacts*> list;
    for (const auto& [code, row] : latest_) {
      if (row != nullptr) list.push_back(row);
    }
    return list;
  }

 private:
  static CurrencyFacts copied(const CurrencyFacts& row, std::list<std::string>& texts) {
    const auto keep = [&texts](std::string_view text) -> std::string_view {
      return texts.emplace_back(text);
    };
    CurrencyFacts copy = row;
    copy.code = keep(row.code);
    copy.signs = WordList(keep(row.signs.text()));
    copy.regions = WordList(keep(row.regions.text()));
    copy.successor = keep(row.successor);
    copy.replaced = keep(row.replaced);
    copy.lastDay = keep(row.lastDay);
    copy.ratioSince = keep(row.ratioSince);
    return copy;
  }

  std::atomic<std::uint64_t> changes_ = 0;
  mutable std::shared_mutex mutex_;
  std::list<std::string> texts_;
  std::list<CurrencyFacts> rows_;
  // Null where there was no memory for the rest of what came with it.
  std::map<std::string, const CurrencyFacts*, std::less<>> latest_;
};

Added& added() {
  static NoDestructor<Added> facts;
  return *facts;
}

}  // namespace

const CurrencyFacts* currencyFacts(std::string_view code) noexcept {
  const CurrencyFacts* const found = added().find(code);
  return found != nullptr ? found : builtinFacts(code);
}

std::vector<const CurrencyFacts*> allCurrencyFacts() {
  return guardedOr(Log::process(), "Listing currency facts", std::vector<const CurrencyFacts*>(),
                   [] {
                     const auto byCode = [](const CurrencyFacts* a, const CurrencyFacts* b) {
                       return a->code < b->code;
                     };
                     const auto hosts = added().all();
                     std::vector<const CurrencyFacts*> own;
                     for (std::size_t i = 0; i < kCurrencyFactsRows; ++i) {
                       own.push_back(&builtinFacts(i));
                     }
                     std::vector<const CurrencyFacts*> all;
                     // Of two with one code the host's is taken.
                     std::set_union(hosts.begin(), hosts.end(), own.begin(), own.end(),
                                    std::back_inserter(all), byCode);
                     return all;
                   });
}

bool addCurrencyFacts(std::span<const CurrencyFacts> rows) {
  if (!std::all_of(rows.begin(), rows.end(), isUsable)) return false;
  return guarded(Log::process(), "Adding currency facts", [&] { added().add(rows); });
}

std::uint64_t currencyFactsChanges() noexcept {
  return added().changes();
}

}  // namespace fexora
