#include "fexora/catalogue/WholeNames.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <tuple>
#include <utility>

#include "fexora/catalogue/CurrencyFacts.h"
#include "fexora/catalogue/MostTraded.h"

namespace fexora {
namespace {

// What nobody has in mind who says "euro", "peso" or "yuan": funds codes, units of account and the
// yuan that is traded elsewhere.
constexpr std::string_view kUnits[] = {"BOV", "CHE", "CHW", "CLF", "CNH", "COU", "MXV",
                                       "USN", "UYI", "UYW", "VED", "XAD", "XBA", "XBB",
                                       "XBC", "XBD", "XDR", "XSU", "XUA", "ZWG"};

// How a currency stands to its use, the best first.
enum Use : int { kInUse, kCrypto, kWithdrawn };

bool isMoney(std::string_view code) {
  const CurrencyFacts* const facts = currencyFacts(code);
  const bool isOther = facts != nullptr &&
                       (facts->kind == CurrencyKind::metal || facts->kind == CurrencyKind::crypto);
  return !isOther && std::find(std::begin(kUnits), std::end(kUnits), code) == std::end(kUnits);
}

std::string_view wordAt(std::string_view name, bool isLast) {
  return isLast ? name.substr(name.rfind(' ') + 1) : name.substr(0, name.find(' '));
}

// Whether words of the name's script stand without blanks between them, as in Japanese.
bool isWithoutBlanks(std::string_view word) {
  constexpr unsigned char kFirstByte = 0xE3;  // of U+3000 and what follows
  return !word.empty() && static_cast<unsigned char>(word.front()) >= kFirstByte;
}

// How many names share their first or last word with another currency's.
std::size_t sharedCount(const WholeNames::Names& names, bool isLast) {
  std::map<std::string_view, std::set<std::uint32_t>> places;
  for (const auto& [name, place] : names) places[wordAt(name, isLast)].insert(place);
  std::size_t count = 0;
  for (const auto& [word, of] : places) count += of.size() > 1 ? of.size() : 0;
  return count;
}

}  // namespace

int WholeNames::useOf(std::uint32_t place) const {
  const CurrencyFacts* const facts = currencyFacts(codes_[place]);
  if (facts == nullptr) return kInUse;
  if (facts->kind == CurrencyKind::withdrawn) return kWithdrawn;
  return facts->kind == CurrencyKind::crypto ? kCrypto : kInUse;
}

void WholeNames::add(std::string_view words, NameKind kind, std::uint32_t place) {
  if (words.empty()) return;
  const auto [at, isNew] = names_.try_emplace(std::string(words), WholeName{kind, {}});
  WholeName& name = at->second;
  if (!isNew && kind < name.kind) name = {kind, {}};
  const bool isKnown =
      std::find(name.places.begin(), name.places.end(), place) != name.places.end();
  if (kind == name.kind && !isKnown) name.places.push_back(place);
}

void WholeNames::addLanguage(const Names& names) {
  Names money;
  for (const auto& [name, place] : names) {
    add(name, NameKind::currency, place);
    if (isMoney(codes_[place])) money.emplace_back(name, place);
  }
  addShared(money, sharedCount(money, true) >= sharedCount(money, false));
}

void WholeNames::addShared(const Names& names, bool isLast) {
  std::set<std::string_view> joined;
  for (const auto& [name, place] : names) {
    const std::string_view word = wordAt(name, isLast);
    add(word, NameKind::shared, place);
    if (isWithoutBlanks(word)) joined.insert(word);
  }
  for (const std::string_view word : joined) {
    for (const auto& [name, place] : names) {
      const bool hasWord = isLast ? name.ends_with(word) : name.starts_with(word);
      if (hasWord) add(word, NameKind::shared, place);
    }
  }
}

void WholeNames::complete() {
  for (auto& [words, name] : names_) {
    std::vector<std::tuple<int, std::size_t, std::uint32_t>> order;
    for (const std::uint32_t place : name.places) {
      order.emplace_back(useOf(place), tradedPlace(codes_[place]), place);
    }
    std::sort(order.begin(), order.end());
    name.places.clear();
    for (const auto& [use, traded, place] : order) {
      const bool isFirst = use == std::get<0>(order.front());
      if (isFirst || name.kind == NameKind::currency) name.places.push_back(place);
    }
    const std::string_view first = wordAt(words, false);
    if (first.size() < words.size()) firsts_.insert(first);
  }
}

const WholeName* WholeNames::find(const std::string& words) const {
  const auto at = names_.find(words);
  return at != names_.end() ? &at->second : nullptr;
}

bool WholeNames::goesOnAfter(std::string_view words) const {
  return firsts_.contains(wordAt(words, false));
}

}  // namespace fexora
