#include "fexora/catalogue/CurrencyRanking.h"

#include <algorithm>
#include <memory>
#include <tuple>
#include <utility>

#include "fexora/catalogue/CurrencyFacts.h"
#include "fexora/catalogue/MostTraded.h"
#include "fexora/catalogue/RankingKeys.h"
#include "fexora/platform/base/Guarded.h"

namespace fexora {
namespace {

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

// Nothing may be taken down under a thread that still searches.
class JoinedAtExit {
 public:
  explicit JoinedAtExit(WorkerThread& thread) : thread_(thread) {}
  JoinedAtExit(const JoinedAtExit&) = delete;
  JoinedAtExit& operator=(const JoinedAtExit&) = delete;
  ~JoinedAtExit() { thread_.join(); }

 private:
  WorkerThread& thread_;
};

}  // namespace

void CurrencyManager::prepareSearch() const {
  const std::lock_guard lock(preparingMutex_);
  if (isPreparing_) return;
  preparing_.join();
  // The one catalogue that lives for ever.
  if (block_ != nullptr) static const JoinedAtExit joined(preparing_);
  isPreparing_ = true;
  const bool isStarted = preparing_.start([this] {
    guarded(*platform_.log, "Preparing the search", [this] {
      searchKeys();
      rankingKeys();
    });
    isPreparing_ = false;
  });
  if (!isStarted) isPreparing_ = false;
}

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
  std::vector<std::tuple<Match, std::size_t, std::size_t>> order;
  for (std::size_t place = 0; place < matches.size(); ++place) {
    if (matches[place] == Match::none || excluded.holds(*_currencies[place])) continue;
    order.emplace_back(matches[place], tradedPlace(_currencies[place]->code()), place);
  }
  const auto wanted = static_cast<std::uint64_t>(limit);
  const auto end = order.size() <= wanted ? order.end() : order.begin() + limit;
  std::partial_sort(order.begin(), end, order.end());
  for (auto at = order.begin(); at != end; ++at) result.push_back(_currencies[std::get<2>(*at)]);
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
      const bool counts = *best <= Match::wholeCountry || isInUse(*currency);
      if (matches[place] == *best && counts) meant.push_back(currency);
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
