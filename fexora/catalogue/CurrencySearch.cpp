#include "fexora/catalogue/CurrencySearch.h"

#include <algorithm>
#include <memory>
#include <numeric>
#include <unordered_map>
#include <utility>

#include <string.h>  // memmem

#include "fexora/catalogue/CurrencyManager.h"
#include "fexora/platform/base/Guarded.h"

namespace fexora {
namespace {

constexpr char kSeparator = '\xFF';  // in no UTF-8
constexpr std::size_t kBlockStep = 32;
constexpr std::size_t kNowhere = std::string_view::npos;

std::size_t findFrom(std::string_view whole, std::string_view part, std::size_t from) noexcept {
  const void* const hit =
      memmem(whole.data() + from, whole.size() - from, part.data(), part.size());
  return hit != nullptr ? static_cast<std::size_t>(static_cast<const char*>(hit) - whole.data())
                        : kNowhere;
}

// Whether every byte of the key starts a character of its own.
bool isOfSingleBytes(std::string_view key) noexcept {
  return isAscii(key) && key.find('\r') == kNowhere;
}

// Which groups a search has given or must leave out.
class Groups {
 public:
  explicit Groups(std::uint32_t size) : marks_(size) {}
  void add(std::uint32_t group) {
    if (group < marks_.size()) marks_[group] = true;
  }
  bool holds(std::uint32_t group) const { return group < marks_.size() && marks_[group]; }

 private:
  std::vector<bool> marks_;
};

}  // namespace

SearchKeys::SearchKeys(const std::vector<CurrencyRef>& currencies, HostStrings& strings, Text& text)
    : generation_(strings.generation()) {
  std::unordered_map<std::string, std::uint32_t> firsts;
  for (const CurrencyRef& currency : currencies) {
    const std::string& code = currency->code();
    const std::string code_key = keyOf(text, code);
    const std::string name_key = keyOf(text, localizedString(strings, code));
    starts_.push_back(block_.size());
    if (name_key != code_key) append(name_key, text);
    codes_.push_back(block_.size());
    append(code_key, text);
    const auto first = firsts.try_emplace(text.canonical(code), size()).first;
    groups_.push_back(code.empty() ? kNoGroup : first->second);
  }
  starts_.push_back(block_.size());
  makeIndexes();
}

void SearchKeys::makeIndexes() {
  std::uint32_t place = 0;
  for (std::size_t at = 0; at < block_.size(); at += kBlockStep) {
    while (starts_[place + 1] <= at) ++place;
    steps_.push_back(place);
  }
  byCode_.resize(size());
  std::iota(byCode_.begin(), byCode_.end(), 0U);
  std::stable_sort(byCode_.begin(), byCode_.end(),
                   [this](auto a, auto b) { return codeKey(a) < codeKey(b); });
}

std::string SearchKeys::keyOf(Text& text, std::string_view plain) {
  return text.canonical(text.lowercased(plain));
}

void SearchKeys::append(std::string_view key, Text& text) {
  const std::size_t start = block_.size();
  block_.append(key).push_back(kSeparator);
  if (isOfSingleBytes(key)) {
    if (!breaks_.empty()) breaks_.resize(block_.size(), true);
    return;
  }
  if (breaks_.empty()) breaks_.assign(start, true);
  breaks_.resize(block_.size(), false);
  breaks_[start] = true;
  for (const std::size_t end : text.characterEnds(key)) breaks_[start + end] = true;
}

bool SearchKeys::isBreak(std::size_t at) const noexcept {
  return breaks_.empty() || breaks_[at];
}

std::uint32_t SearchKeys::placeAt(std::size_t at) const noexcept {
  std::uint32_t place = steps_[at / kBlockStep];
  while (starts_[place + 1] <= at) ++place;
  return place;
}

std::string_view SearchKeys::codeKey(std::uint32_t place) const noexcept {
  const std::size_t start = codes_[place];
  return std::string_view(block_).substr(start, starts_[place + 1] - 1 - start);
}

std::span<const std::uint32_t> SearchKeys::withCode(std::string_view key) const {
  const auto first = std::lower_bound(
      byCode_.begin(), byCode_.end(), key,
      [this](std::uint32_t place, std::string_view k) { return codeKey(place) < k; });
  auto last = first;
  while (last != byCode_.end() && codeKey(*last) == key) ++last;
  return {first, last};
}

std::uint32_t SearchKeys::nextContaining(std::string_view key, std::uint32_t place) const {
  if (key.empty() || place >= size()) return size();
  std::size_t from = starts_[place];
  while (true) {
    const std::size_t at = findFrom(block_, key, from);
    if (at == kNowhere) return size();
    if (isBreak(at) && isBreak(at + key.size())) return placeAt(at);
    from = at + 1;
  }
}

std::vector<CurrencyRef> CurrencyManager::currenciesForString(
    std::string_view string, std::int64_t limit, const std::vector<CurrencyRef>& exclude) const {
  return guardedOr(*platform_.log, "Searching the catalogue", std::vector<CurrencyRef>(),
                   [&] { return search(string, limit, exclude); });
}

std::vector<CurrencyRef> CurrencyManager::search(std::string_view string, std::int64_t limit,
                                                 const std::vector<CurrencyRef>& exclude) const {
  std::vector<CurrencyRef> result;
  const std::string query = SearchKeys::keyOf(*platform_.text, string);
  if (query.empty() || query.find(kSeparator) != std::string::npos) return result;
  const auto keys = searchKeys();
  Groups excluded(keys->size());
  for (const CurrencyRef& currency : exclude) {
    if (currency != nullptr) excluded.add(groupOf(*keys, currency->code()));
  }
  Groups given(keys->size());
  const auto give = [&](std::uint32_t place) {
    result.push_back(_currencies[place]);
    given.add(keys->group(place));
  };
  if (platform_.text->characterCount(query) == 3) {
    for (const std::uint32_t place : keys->withCode(query)) {
      if (!excluded.holds(keys->group(place))) give(place);
    }
  }
  auto counter = static_cast<std::int64_t>(result.size());
  // Records that do not count leave the counter alone, so only the first of them all can end the
  // walk without being a match.
  const bool endsAtFirst = counter == limit;
  for (std::uint32_t place = keys->nextContaining(query, 0); place < keys->size();
       place = keys->nextContaining(query, place + 1)) {
    if (endsAtFirst && place > 0 && counter == limit) break;
    const std::uint32_t group = keys->group(place);
    if (given.holds(group)) continue;
    if (!excluded.holds(group)) give(place);
    if (++counter == limit) break;
  }
  return result;
}

std::uint32_t CurrencyManager::groupOf(const SearchKeys& keys, std::string_view code) const {
  for (const std::uint32_t place : keys.withCode(SearchKeys::keyOf(*platform_.text, code))) {
    if (equalText(*platform_.text, _currencies[place]->code(), code)) return keys.group(place);
  }
  return SearchKeys::kNoGroup;
}

std::shared_ptr<const SearchKeys> CurrencyManager::searchKeys() const {
  const std::uint64_t generation = platform_.strings->generation();
  const std::uint64_t changes = codeChanges_.load(std::memory_order_acquire);
  {
    const std::lock_guard lock(searchMutex_);
    const bool isCurrent = searchKeys_ != nullptr && searchKeys_->generation() == generation &&
                           searchedChanges_ == changes;
    if (generation != 0 && isCurrent) return searchKeys_;
  }
  auto made = std::make_shared<const SearchKeys>(_currencies, *platform_.strings, *platform_.text);
  if (made->generation() == 0) return made;
  const std::lock_guard lock(searchMutex_);
  searchKeys_ = made;
  searchedChanges_ = changes;
  return made;
}

}  // namespace fexora
