// The catalogue: every currency that the system knows, in a fixed order, read once from the
// library's resource Currency.plist (an array of codes).
//
// Lookups compare codes exactly (canonical equivalence; case counts) and take the same time for any
// size. After construction the list never changes, so lookups may run on any thread at once, as far
// as nobody changes a record's code meanwhile. The first look-up after such a change makes the
// index of codes anew.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "fexora/catalogue/Currency.h"
#include "fexora/platform/Platform.h"
#include "fexora/platform/network/WorkerThread.h"
#include "fexora/platform/values/NSObject.h"

namespace fexora {

class CodeIndex;
class RankingKeys;
class SearchKeys;

// Reachable by name: the selectors "init" (answers the null value; the catalogue is complete
// already) and "hasCurrency:" (a string; answers a boolean).
class FEXORA_API CurrencyManager : public NSObject {
 public:
  // Reads the resource. One that is missing, unreadable or not an array of strings gives one log
  // line, and the copy that is compiled in takes its place: the catalogue is never partly filled.
  // Where there is no memory for it, it is empty, and the log says so; a look-up or a search that
  // finds no memory finds nothing and says so, too.
  CurrencyManager();
  explicit CurrencyManager(Platform& platform);
  CurrencyManager(const CurrencyManager&) = delete;
  CurrencyManager& operator=(const CurrencyManager&) = delete;
  ~CurrencyManager() override;

  // The catalogue's own records. Duplicate and empty codes of the resource are kept.
  // References to the shared catalogue's records, here and wherever the library hands them out,
  // count nothing, since these live to the end of the process: use_count() is 0, a std::weak_ptr
  // made from one is empty at once, and an order by owner takes all of them for one. Keep the
  // reference itself, or the code.
  virtual const std::vector<CurrencyRef>& currencies() const { return _currencies; }

  // The first record with this code, the same object at each call; null when there is none.
  virtual CurrencyRef currencyForCode(std::string_view code) const;
  virtual bool hasCurrency(std::string_view code) const;

  // Free-text search; see catalogue/CurrencySearch.h, where it is defined.
  virtual std::vector<CurrencyRef> currenciesForString(
      std::string_view string, std::int64_t limit, const std::vector<CurrencyRef>& exclude) const;

  // The same by rank, as people search; see catalogue/CurrencyRanking.h, where it is defined.
  std::vector<CurrencyRef> rankedCurrencies(std::string_view text, std::int64_t limit,
                                            const std::vector<CurrencyRef>& exclude = {}) const;
  // The currency that a person means by a code, a sign, a name or a country, where that is only
  // one: the only one that matches it best in the ranks 1 to 8 of rankedCurrencies(), withdrawn and
  // crypto currencies left out from rank 5 on. Otherwise null.
  CurrencyRef currencyMeant(std::string_view text) const;

  // Makes what the searches compare with, unless it is kept, on a thread of its own; returns at
  // once. For whoever is about to let a person type: the first search takes milliseconds otherwise.
  // One that comes meanwhile does not wait for it. Any thread. The host's strings are asked on that
  // thread; it ends before this object does, and before the process.
  void prepareSearch() const;

  // Each record's display record, in order; see catalogue/NSCurrency.h, where it is defined.
  virtual std::vector<NSCurrencyRef> getNSCurrenciesFromCurrencies(
      const std::vector<CurrencyRef>& currencies) const;

  std::optional<Value> perform(std::string_view selector, const Array& arguments = {}) override;

 private:
  friend CurrencyManager& currencyManager();
  friend class CataloguePlaces;
  friend class CurrencyNaming;
  friend class NearSearch;
  static constexpr std::uint32_t kNoPlace = Currency::kNoPlace;
  enum class Lifetime : std::uint8_t { counted, endless };
  CurrencyManager(Platform& platform, Lifetime lifetime);

  void loadCurrencies(Lifetime lifetime);
  std::uint32_t placeOfCode(std::string_view code) const;
  std::uint32_t placeOf(const Currency& currency) const;
  void indexCodes() const;
  bool indexIsCurrent() const noexcept {
    return indexedChanges_.load(std::memory_order_acquire) ==
           codeChanges_.load(std::memory_order_acquire);
  }
  std::vector<CurrencyRef> search(std::string_view string, std::int64_t limit,
                                  const std::vector<CurrencyRef>& exclude) const;
  std::shared_ptr<const SearchKeys> searchKeys() const;
  std::uint32_t groupOf(const SearchKeys& keys, std::string_view code) const;
  std::vector<CurrencyRef> ranked(std::string_view text, std::int64_t limit,
                                  const std::vector<CurrencyRef>& exclude) const;
  std::shared_ptr<const RankingKeys> rankingKeys() const;

  Platform& platform_;
  std::unique_ptr<Currency[]> block_;  // the records of the shared catalogue, which never goes
  std::vector<CurrencyRef> _currencies;
  std::atomic<std::uint64_t> codeChanges_ = 0;  // raised by the records
  // Of the list as it was at indexedChanges_. Made under indexMutex_; read without, by whoever has
  // seen that it is current. Null where there was no memory for the list.
  mutable std::unique_ptr<const CodeIndex> codes_;
  mutable std::atomic<std::uint64_t> indexedChanges_ = 0;
  mutable std::mutex indexMutex_;
  // Of searchedChanges_; these and the next under searchMutex_.
  mutable std::shared_ptr<const SearchKeys> searchKeys_;
  mutable std::uint64_t searchedChanges_ = 0;
  mutable std::shared_ptr<const RankingKeys> rankingKeys_;
  mutable std::mutex searchMutex_;
  mutable std::mutex preparingMutex_;
  mutable std::atomic<bool> isPreparing_ = false;
  mutable WorkerThread preparing_;  // last: it uses the above
};

// The process's one catalogue, made at the first call and never destroyed. Any thread.
FEXORA_API CurrencyManager& currencyManager();

}  // namespace fexora
