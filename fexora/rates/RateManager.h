// The rate engine: holds the USD rates, derives the pair rates, converts amounts, and brings fresh
// rates from memory, the store and the rates service.
//
// Main thread only. The catalogue and the store are the shared ones when none are given; each is
// asked for at its first use. An operation that finds no memory says so in the log and ends where
// it is: rates in memory stay as they were, a conversion has no lines and no source.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "fexora/platform/Platform.h"
#include "fexora/platform/network/Transfer.h"
#include "fexora/platform/values/NSObject.h"
#include "fexora/rates/AnswerCheck.h"
#include "fexora/rates/Freshness.h"
#include "fexora/records/Converted.h"
#include "fexora/records/Rate.h"
#include "fexora/records/Response.h"
#include "fexora/store/StoreManager.h"

namespace fexora {

class PairRates;

// What kTrelbyRatesURL is: the environment's FEXORA_RATES_URL, else the address that the build was
// configured with.
FEXORA_API std::string defaultRatesURL();

// The address of the rates service unless a host sets another, as it was when the program began.
// Made before any global of a source that includes this.
inline const std::string kTrelbyRatesURL = defaultRatesURL();

// Reachable by name: "serviceMessage" and "lastUpdate" (read and write; a date or the null value),
// and the selector "tryLoadRatesFromQTXServer".
class FEXORA_API RateManager : public NSObject {
 public:
  // `fromCache` is true when the rates came from memory or the store. `error` is set only for a
  // request that failed, and is valid during the call. It may end its manager; what it throws is
  // said in the log and changes nothing.
  using Completion = std::function<void(bool fromCache, const ResponseError* error)>;

  // The least time between two requests of one process, in seconds.
  static constexpr double kRequestSpacing = 30.0;

  RateManager();
  explicit RateManager(Platform& platform, CurrencyManager* catalogue = nullptr,
                       StoreManager* store = nullptr);
  RateManager(const RateManager&) = delete;
  RateManager& operator=(const RateManager&) = delete;
  ~RateManager() override;

  // The service's message for the user in its last answer; empty before the first.
  virtual const std::string& serviceMessage() const { return serviceMessage_; }
  virtual void setServiceMessage(std::string message) { serviceMessage_ = std::move(message); }
  // When this process last sent a request. Setting it moves the spacing of requests.
  virtual std::optional<Date> lastUpdate() const { return lastUpdate_; }
  virtual void setLastUpdate(std::optional<Date> date) { lastUpdate_ = date; }
  // When the current rates were stored, by this process or the other.
  virtual std::optional<Date> updated() const;

  Platform& platform() const { return platform_; }

  // Where rates are asked for: kTrelbyRatesURL until another address is set.
  const std::string& ratesURL() const { return ratesURL_; }
  void setRatesURL(std::string address) { ratesURL_ = std::move(address); }

  // Selects `forCurrencies` (absent: the whole catalogue; null references are skipped) and brings
  // rates for them, telling `complete` at each arrival.
  //   1. With `cache` and rates in memory: derives anew, complete(true, null), and ends.
  //   2. The store's rates, if it holds a list: takes them, derives, complete(true, null).
  //   3. Ends if a request was sent less than 30 seconds ago by the wall clock; a clock that was
  //      set back counts as less, a `lastUpdate` that is not a number as none. The difference is
  //      logged.
  //   4. Sends one request and returns. Later, on the main thread: an answer is taken, stored (the
  //      file is written if `sync`), derived, complete(false, null); a failure changes nothing,
  //      complete(false, error).
  virtual void loadRates(std::optional<std::vector<CurrencyRef>> forCurrencies, bool cache,
                         bool sync, Completion complete);
  void loadRates(std::optional<std::vector<CurrencyRef>> forCurrencies, Completion complete) {
    loadRates(std::move(forCurrencies), false, true, std::move(complete));
  }
  // The store's rates, or those in memory where it keeps none, derived for `forCurrencies` (absent:
  // the whole catalogue). No request and no completion. False when there are none, and without
  // memory, which the log says.
  bool loadStoredRates(std::optional<std::vector<CurrencyRef>> forCurrencies = {});
  // Called while the answer to a request of loadRates comes; what it says and when stands in
  // Transfer.h. Counts for requests that are sent from then on; none by default.
  void setProgress(Transfer::ProgressHandler handler) { progress_ = std::move(handler); }
  // Ends the requests that are under way, as the end of this manager does. Each changes nothing,
  // whatever has come of it by now, and later calls its complete(false, error) of kind `cancelled`
  // (after the end of this manager none is called). `lastUpdate` stays. Nothing when none is under
  // way.
  void cancelRequests();
  // Takes an answer that a host has got in another way, as loadRates takes the service's: checked,
  // kept (the file is written if `sync`), derived for the last selection. Nothing when it was
  // taken; else why not, and what was held stays.
  std::optional<ResponseError> takeAnswer(const Response& answer, RatesAnswer::Origin origin,
                                          bool sync);
  // Takes tables of several sources at once: the first as an answer; the others stay beside it,
  // each with its own day, for what the first lacks. All or none. With a check, what they
  // contradict each other on is a reason against them, and each is looked at.
  std::optional<ResponseError> takeTables(std::vector<RatesTable> tables, bool sync);
  // What the check said of the last answer that it looked at.
  const AnswerVerdict& verdict() const { return verdict_; }
  // Told of each table that was taken, once it is in the store, as it was printed where that is
  // known: for a host that keeps them (takenTable, RateHistory). It may not end this manager; what
  // it throws is said in the log.
  using TableTaken = std::function<void(const RatesTable& table)>;
  void setTableTaken(TableTaken told) { tableTaken_ = std::move(told); }

  // Looks at every answer before it is taken; may set another check, but not end this manager. One
  // with a reason against it changes nothing: an error of kind `implausible`. None by default.
  void setAnswerCheck(AnswerCheck check) { check_ = std::move(check); }

  // How fresh the store's rates are, now or at `now`; see Freshness.h. Rates that are only in
  // memory count as none.
  Freshness freshness(const FreshnessPolicy& policy = {}, std::optional<Date> now = {}) const;

  // Does nothing; kept for hosts that call it by name.
  virtual void tryLoadRatesFromQTXServer();

  // Records amount and source in the store first (writing the file if `sync`), whatever is found
  // then: one line for each pair rate from `srcCurrency`. The source must be the US dollar or among
  // the loaded currencies, else there are none. The lines stand in the order of the rates as they
  // came, after the dollar's for any other source, and not in that of the selection; and the dollar
  // comes twice where the service gave it a rate and it is selected beside another source. Ask
  // itemForDstCurrency() for one destination. See ConvertedItem for `invert`. Of more than
  // limits::kConversionLines the first are given, and the log says so.
  virtual std::pair<Converted, StoreSourceRef> convertAmount(NSNumber amount,
                                                             CurrencyRef srcCurrency, bool sync,
                                                             bool invert = false);
  // The amounts alone of those lines, in double arithmetic and without limit, into `amounts` as far
  // as that reaches; gives how many there are. Records nothing and takes no memory: for a host that
  // converts over and over into room of its own.
  std::size_t convertInto(std::span<double> amounts, double amount, const CurrencyRef& srcCurrency,
                          bool invert = false) const;
  // The first pair rate from `src` to `dst`; nothing is derived, inverted or made up for it.
  virtual std::optional<Rate> rateForSourceCurrency(const CurrencyRef& src,
                                                    const CurrencyRef& dst) const;

  std::optional<Value> valueForKey(std::string_view name) const override;
  bool setValueForKey(std::string_view name, const Value& value) override;
  std::optional<Value> perform(std::string_view selector, const Array& arguments = {}) override;

 private:
  void filterRatesForLocalCurrencies(const std::vector<USDRateRef>& list);
  void ratesForCurrenciesBasedOnUSDRates();
  bool mayRequest() const;
  void load(std::optional<std::vector<CurrencyRef>>& forCurrencies, bool cache, bool sync,
            Completion& complete);
  void tell(const Completion& complete, bool fromCache, const ResponseError* error) const;
  void request(bool sync, const Completion& complete);
  std::shared_ptr<Transfer> newTransfer();
  HeldRates held() const;
  AnswerVerdict look(const Response& answer, const HeldRates& held) const;
  std::optional<RatesReason> lookAt(std::vector<RatesTable>& tables, const Response* answer);
  std::optional<ResponseError> take(std::vector<RatesTable>& tables, const Response* answer,
                                    bool sync);
  void keep(std::vector<RatesTable>& tables, std::string message, bool sync);
  std::vector<RatesTable> heldTables() const;
  std::vector<DoubtedRate> doubtsAfter(const RatesTable& table) const;
  CurrencyManager& catalogue() const;
  StoreManager& store() const;

  Platform& platform_;
  CurrencyManager* catalogue_;
  StoreManager* store_;
  std::vector<USDRateRef> USDRates_;
  std::unique_ptr<PairRates> rates_;  // null before the first
  std::vector<CurrencyRef> currencies_;
  std::string serviceMessage_;
  std::optional<Date> lastUpdate_;
  AnswerCheck check_;
  AnswerVerdict verdict_;
  TableTaken tableTaken_;
  Transfer::ProgressHandler progress_;
  std::vector<std::weak_ptr<Transfer>> transfers_;
  std::string ratesURL_ = kTrelbyRatesURL;
  // Lets a pending request, or a step after a completion, tell whether this manager still exists.
  std::shared_ptr<RateManager*> self_;
};

// The process's one rate manager, made at the first call and never destroyed. Any thread may be
// first; its operations belong to the main thread. Making it touches neither store nor network.
FEXORA_API RateManager& rateManager();

}  // namespace fexora
