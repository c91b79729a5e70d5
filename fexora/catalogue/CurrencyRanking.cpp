#include "fexora/catalogue/CurrencyRanking.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "fexora/catalogue/CurrencyFacts.h"
#include "fexora/catalogue/RankingKeys.h"
#include "fexora/platform/base/Guarded.h"

namespace fexora {
namespace {

constexpr Match kRanks[] = {Match::code,      Match::sign,    Match::codeStart, Match::nameStart,
                            Match::wordStart, Match::country, Match::inside,    Match::slip};

// The codes that a search leaves out; a record without a code equals none.
class Excluded {
 public:
  Excluded(Text& text, const std::vector<CurrencyRef>& currencies) : text_(text) {
    for (const CurrencyRef& currency : currencies) {
      if (currency != nullptr && !currency->code().empty()) {
        codes_.push_back(text_.canonical(currency->code()));
      }
    }
    std::sort(codes_.begin(), codes_.end());
  }

  bool holds(const Currency& currency) const {
    return !codes_.empty() &&
           std::binary_search(codes_.begin(), codes_.end(), text_.canonical(currency.code()));
  }

 private:
  Text& text_;
  std::vector<std::string> codes_;
};

bool isInUse(const Currency& currency) {
  const CurrencyFacts* facts = currencyFacts(currency.code());
  return facts == nullptr ||
         (facts->kind != CurrencyKind::withdrawn && facts->kind != CurrencyKind::crypto);
}

}  // namespace

std::vector<CurrencyRef> CurrencyManager::rankedCurrencies(
    std::string_view text, std::int64_t limit, const std::vector<CurrencyRef>& exclude) const {
  return guardedOr(*platform_.log, "Searching the catalogue", std::vector<CurrencyRef>(),
                   [&] { return ranked(text, limit, exclude); });
}

std::vector<CurrencyRef> CurrencyManager::ranked(std::string_view text, std::int64_t limit,
                                                 const std::vector<CurrencyRef>& exclude) const {
  std::vector<CurrencyRef> result;
  if (limit <= 0) return result;
  const auto matches = rankingKeys()->matches(*platform_.text, text);
  const Excluded excluded(*platform_.text, exclude);
  for (const Match rank : kRanks) {
    for (std::size_t place = 0; place < matches.size(); ++place) {
      if (matches[place] != rank || excluded.holds(*_currencies[place])) continue;
      result.push_back(_currencies[place]);
      if (--limit == 0) return result;
    }
  }
  return result;
}

CurrencyRef CurrencyManager::currencyMeant(std::string_view text) const {
  return guardedOr(*platform_.log, "Searching the catalogue", CurrencyRef(), [&] {
    const auto matches = rankingKeys()->matches(*platform_.text, text);
    const auto best = std::min_element(matches.begin(), matches.end());
    if (best == matches.end() || *best >= Match::inside) return CurrencyRef();
    std::vector<CurrencyRef> meant;
    for (std::size_t place = 0; place < matches.size(); ++place) {
      const CurrencyRef& currency = _currencies[place];
      if (matches[place] == *best && isInUse(*currency)) meant.push_back(currency);
    }
    if (meant.size() > 1) {
      std::erase_if(meant, [&, whole = platform_.text->folded(text)](const CurrencyRef& currency) {
        const auto name = localizedString(*platform_.strings, currency->code());
        return platform_.text->folded(name) != whole;
      });
    }
    return meant.size() == 1 ? meant.front() : CurrencyRef();
  });
}

std::shared_ptr<const RankingKeys> CurrencyManager::rankingKeys() const {
  HostStrings& strings = *platform_.strings;
  RankingKeys::Version version{strings.generation(), currencyFactsChanges(),
                               codeChanges_.load(std::memory_order_acquire), strings.language()};
  {
    const std::lock_guard lock(searchMutex_);
    const bool isCurrent = rankingKeys_ != nullptr && rankingKeys_->version() == version;
    if (version.strings != 0 && isCurrent) return rankingKeys_;
  }
  auto made = std::make_shared<const RankingKeys>(_currencies, strings, *platform_.text,
                                                  std::move(version));
  if (made->version().strings == 0) return made;
  const std::lock_guard lock(searchMutex_);
  rankingKeys_ = made;
  return made;
}

}  // namespace fexora
