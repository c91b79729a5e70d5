#include "fexora/rates/RateManager.h"

#include <algorithm>
#include <iterator>

#include "fexora/catalogue/CataloguePlaces.h"
#include "fexora/platform/base/Environment.h"
#include "fexora/platform/base/Guarded.h"
#include "fexora/platform/base/Limits.h"
#include "fexora/platform/base/NoDestructor.h"
#include "fexora/platform/network/NetworkManager.h"
#include "fexora/platform/text/NumberText.h"
#include "fexora/platform/text/OneLine.h"
#include "fexora/rates/BundledRates.h"
#include "fexora/rates/KnownRates.h"
#include "fexora/rates/PairRates.h"

namespace fexora {

std::string defaultRatesURL() {
  return environment("FEXORA_RATES_URL").value_or(FEXORA_RATES_URL);
}

namespace {

constexpr std::string_view kLoading = "Loading rates";
constexpr std::string_view kTaking = "Taking new rates";

const ResponseError& lackOfMemory() {
  static const NoDestructor<ResponseError> error(
      ResponseError{ResponseError::Kind::tooLarge, {}, kOutOfMemory, 0});
  return *error;
}

}  // namespace

RateManager::RateManager() : RateManager(Platform::process()) {}

RateManager::RateManager(Platform& platform, CurrencyManager* catalogue, StoreManager* store)
    : platform_(platform), catalogue_(catalogue), store_(store) {}

RateManager::~RateManager() {
  cancelRequests();
}

CurrencyManager& RateManager::catalogue() const {
  return catalogue_ != nullptr ? *catalogue_ : currencyManager();
}

StoreManager& RateManager::store() const {
  return store_ != nullptr ? *store_ : storeManager();
}

std::optional<Date> RateManager::updated() const {
  const Value* stored = store().ud().find(kUDUSDRatesUpdated);
  if (stored == nullptr || stored->date() == nullptr) return std::nullopt;
  return *stored->date();
}

// With their pair rates, since each code is looked up for both.
void RateManager::filterRatesForLocalCurrencies(const std::vector<USDRateRef>& list) {
  std::vector<USDRateRef> kept;
  const auto known = knownRates(catalogue(), list, &kept);
  rates_ = std::make_unique<PairRates>(catalogue(), known, currencies_);
  USDRates_ = std::move(kept);
}

void RateManager::ratesForCurrenciesBasedOnUSDRates() {
  const auto known = knownRates(catalogue(), USDRates_);
  rates_ = std::make_unique<PairRates>(catalogue(), known, currencies_);
}

void RateManager::loadRates(std::optional<std::vector<CurrencyRef>> forCurrencies, bool cache,
                            bool sync, Completion complete) {
  if (self_ == nullptr) {
    guarded(*platform_.log, kLoading, [&] { self_ = std::make_shared<RateManager*>(this); });
  }
  const std::weak_ptr<RateManager*> self = self_;
  const bool isDone =
      guarded(*platform_.log, kLoading, [&] { load(forCurrencies, cache, sync, complete); });
  if (!isDone && !self.expired()) tell(complete, false, &lackOfMemory());
}

void RateManager::load(std::optional<std::vector<CurrencyRef>>& forCurrencies, bool cache,
                       bool sync, Completion& complete) {
  const std::weak_ptr<RateManager*> self = self_;
  currencies_ = forCurrencies ? *std::move(forCurrencies) : catalogue().currencies();
  if (cache && !USDRates_.empty()) {
    ratesForCurrenciesBasedOnUSDRates();
    return tell(complete, true, nullptr);
  }
  if (const auto stored = store().loadUSDRates()) {
    filterRatesForLocalCurrencies(*stored);
    tell(complete, true, nullptr);
    if (self.expired()) return;
  }
  if (mayRequest()) request(sync, complete);
}

// This manager may have gone when it returns.
void RateManager::tell(const Completion& complete, bool fromCache,
                       const ResponseError* error) const {
  if (!complete) return;
  quietly(*platform_.log, "A completion of loadRates", [&] { complete(fromCache, error); });
}

bool RateManager::mayRequest() const {
  if (!lastUpdate_) return true;
  const double difference = platform_.loop->wallSeconds() - lastUpdate_->secondsSince1970();
  platform_.log->write("Time difference between requests: " + fixedText(difference, 6) + "sec");
  return !(difference < kRequestSpacing);
}

std::shared_ptr<Transfer> RateManager::newTransfer() {
  std::erase_if(transfers_, [](const auto& transfer) { return transfer.expired(); });
  auto transfer = std::make_shared<Transfer>(progress_);
  transfers_.push_back(transfer);
  return transfer;
}

void RateManager::cancelRequests() {
  for (const auto& weak : std::exchange(transfers_, {})) {
    if (const auto transfer = weak.lock()) transfer->cancel();
  }
}

void RateManager::request(bool sync, const Completion& complete) {
  lastUpdate_ = Date(platform_.loop->wallSeconds());
  NetworkManager::simpleRequest<Response>(
      *platform_.transport, ratesURL_,
      [weak = std::weak_ptr(self_), sync, complete](const std::shared_ptr<Response>& response,
                                                    const std::optional<ResponseError>& error) {
        const auto alive = weak.lock();
        if (alive == nullptr) return;
        RateManager& self = **alive;
        if (response != nullptr) {
          const auto rejected = self.takeAnswer(*response, RatesAnswer::Origin::service, sync);
          self.tell(complete, false, rejected ? &*rejected : nullptr);
        } else if (error) {
          self.tell(complete, false, &*error);
        }
      },
      newTransfer());
}

std::optional<ResponseError> RateManager::takeAnswer(const Response& answer,
                                                     RatesAnswer::Origin origin, bool sync) {
  std::optional<ResponseError> rejected;
  const bool isDone = guarded(*platform_.log, kTaking, [&] {
    std::vector<RatesTable> tables(1);
    tables[0] = {answer.rates(), answer.published(), answer.source(), origin};
    rejected = take(tables, &answer, sync);
  });
  if (!isDone) return lackOfMemory();
  return rejected;
}

std::optional<ResponseError> RateManager::takeTables(std::vector<RatesTable> tables, bool sync) {
  std::optional<ResponseError> rejected;
  if (tables.empty()) return rejected;
  const bool isDone =
      guarded(*platform_.log, kTaking, [&] { rejected = take(tables, nullptr, sync); });
  if (!isDone) return lackOfMemory();
  return rejected;
}

std::optional<ResponseError> RateManager::take(std::vector<RatesTable>& tables,
                                               const Response* answer, bool sync) {
  verdict_ = {};
  if (auto reason = lookAt(tables, answer)) {
    std::string sentence = reason->sentence();
    // Any check's: it may quote the answer.
    makeOneLine(sentence);
    makeOneLine(reason->text);
    // Why there are none the service may say.
    const bool isTold = reason->kind == RatesReason::Kind::noRates && answer != nullptr &&
                        !answer->serviceMessage().empty();
    if (isTold) sentence += "; the service says: " + oneLine(answer->serviceMessage());
    platform_.log->write("New rates were not taken: " + sentence);
    verdict_ = *std::move(reason);
    return ResponseError{ResponseError::Kind::implausible, {}, std::move(sentence), 0};
  }
  keep(tables, answer != nullptr ? oneLine(answer->serviceMessage()) : std::string(), sync);
  return std::nullopt;
}

namespace {

Response answerOf(const RatesTable& table) {
  Response answer;
  if (table.published) answer.setUpdated(table.published->secondsSince1970());
  answer.setSource(table.source);
  answer.setCount(table.rates.size());
  answer.setRates(table.rates);
  return answer;
}

void leaveOut(std::vector<USDRateRef>& rates, const std::vector<RatesReason>& leftOut) {
  for (const RatesReason& each : leftOut) {
    std::erase_if(rates, [&](const USDRateRef& rate) {
      return rate != nullptr && rate->code() == each.code;
    });
  }
}

void append(std::vector<RatesReason>& all, std::vector<RatesReason>& some) {
  all.insert(all.end(), std::make_move_iterator(some.begin()), std::make_move_iterator(some.end()));
}

}  // namespace

// What is left out of a table is no longer in it afterwards.
std::optional<RatesReason> RateManager::lookAt(std::vector<RatesTable>& tables,
                                               const Response* answer) {
  if (!check_) return std::nullopt;
  HeldRates before = held();
  for (RatesTable& table : tables) {
    const bool isFirst = &table == &tables.front();
    for (const RatesTable* earlier = &tables.front(); earlier != &table; ++earlier) {
      if (auto reason = contradiction(*earlier, table)) return reason;
    }
    AnswerVerdict verdict =
        isFirst && answer != nullptr ? look(*answer, before) : look(answerOf(table), before);
    if (verdict.against) return verdict.against;
    leaveOut(table.rates, verdict.leftOut);
    append(verdict_.leftOut, verdict.leftOut);
    append(verdict_.notices, verdict.notices);
    // What stands beside the first may be as old as it likes.
    before.published.reset();
  }
  return std::nullopt;
}

AnswerVerdict RateManager::look(const Response& answer, const HeldRates& held) const {
  AnswerVerdict verdict = RatesReason{RatesReason::Kind::unchecked, {}, 0, 0, {}};
  // A copy, since it may set another one.
  quietly(*platform_.log, "A check of the rates",
          [&, check = check_] { verdict = check(answer, held); });
  return verdict;
}

HeldRates RateManager::held() const {
  HeldRates held{store().loadUSDRates().value_or(USDRates_), freshness().published,
                 Date(platform_.loop->wallSeconds())};
  for (RatesTable& table : keptTables(store().ud())) {
    held.others.push_back({std::move(table.rates), table.published});
  }
  held.others.push_back({bundledUSDRates(), bundledRatesDay()});
  if (auto answer = store().ratesAnswer()) held.doubted = std::move(answer->doubted);
  return held;
}

// What is in the store now, as tables. The bundled rates need not be kept.
std::vector<RatesTable> RateManager::heldTables() const {
  std::vector<RatesTable> tables = keptTables(store().ud());
  if (hasBundledRates(store())) return tables;
  if (auto rates = store().loadUSDRates()) {
    const auto answer = store().ratesAnswer().value_or(RatesAnswer());
    tables.push_back({*std::move(rates), answer.published, answer.source, answer.origin});
  }
  return tables;
}

// What `table` left out, and of what it does not hold what was left out before: a narrow table
// between two wide ones settles nothing.
std::vector<DoubtedRate> RateManager::doubtsAfter(const RatesTable& table) const {
  std::vector<DoubtedRate> doubted;
  if (!table.published) return doubted;
  for (const RatesReason& each : verdict_.leftOut) {
    doubted.push_back({each.code, each.now, *table.published});
  }
  const auto answer = store().ratesAnswer();
  if (!answer) return doubted;
  for (const DoubtedRate& each : answer->doubted) {
    const auto hasCode = [&](const auto& other) { return other.code == each.code; };
    const auto isRateOf = [&](const USDRateRef& rate) { return rate && rate->code() == each.code; };
    if (std::none_of(table.rates.begin(), table.rates.end(), isRateOf) &&
        std::none_of(doubted.begin(), doubted.end(), hasCode)) {
      doubted.push_back(each);
    }
  }
  return doubted;
}

void RateManager::keep(std::vector<RatesTable>& tables, std::string message, bool sync) {
  std::vector<RatesTable> others = heldTables();
  others.insert(others.end(), tables.begin() + 1, tables.end());
  RatesTable& first = tables.front();
  RatesAnswer said{first.published, first.source, first.origin};
  said.doubted = doubtsAfter(first);
  filterRatesForLocalCurrencies(first.rates);
  serviceMessage_ = std::move(message);
  store().announceRates(std::move(said), tablesBeside(USDRates_, std::move(others)));
  store().saveUSDRates(USDRates_, sync);
  // A copy, since it may set another one.
  for (const RatesTable& table : tables) {
    quietly(*platform_.log, "Whoever is told of new rates", [&, told = tableTaken_] {
      if (told) told(table);
    });
  }
}

bool RateManager::loadStoredRates(std::optional<std::vector<CurrencyRef>> forCurrencies) {
  const bool isDone = guarded(*platform_.log, kLoading, [&] {
    currencies_ = forCurrencies ? *std::move(forCurrencies) : catalogue().currencies();
    const CataloguePlaces places(catalogue());
    const auto isKnown = [&places](std::string_view code) {
      return places.ofCode(code) != CataloguePlaces::kNone;
    };
    if (const auto stored = store().loadUSDRates(isKnown)) {
      filterRatesForLocalCurrencies(*stored);
    } else {
      ratesForCurrenciesBasedOnUSDRates();
    }
  });
  return isDone && !USDRates_.empty();
}

Freshness RateManager::freshness(const FreshnessPolicy& policy, std::optional<Date> now) const {
  return guardedOr(*platform_.log, "Telling how fresh the rates are", Freshness(), [&] {
    return freshnessOf(store(), policy, now.value_or(Date(platform_.loop->wallSeconds())));
  });
}

void RateManager::tryLoadRatesFromQTXServer() {}

std::pair<Converted, StoreSourceRef> RateManager::convertAmount(NSNumber amount,
                                                                CurrencyRef srcCurrency, bool sync,
                                                                bool invert) {
  std::pair<Converted, StoreSourceRef> result;
  guarded(*platform_.log, "Converting an amount", [&] {
    if (srcCurrency == nullptr) srcCurrency = Currency::make();
    result.second = store().saveSourceCurrency(srcCurrency, amount, sync);
    if (rates_ == nullptr) return;
    auto lines = rates_->convert(*srcCurrency, amount, invert);
    if (lines.size() == limits::kConversionLines &&
        lines.size() < rates_->linesFrom(*srcCurrency)) {
      platform_.log->write("A conversion has only its first " +
                           integerText(static_cast<std::int64_t>(lines.size())) + " lines");
    }
    result.first.setItems(std::move(lines));
  });
  return result;
}

std::size_t RateManager::convertInto(std::span<double> amounts, double amount,
                                     const CurrencyRef& srcCurrency, bool invert) const {
  if (srcCurrency == nullptr || rates_ == nullptr) return 0;
  return guardedOr(*platform_.log, "Converting an amount", std::size_t{0},
                   [&] { return rates_->convertInto(amounts, *srcCurrency, amount, invert); });
}

std::optional<Rate> RateManager::rateForSourceCurrency(const CurrencyRef& src,
                                                       const CurrencyRef& dst) const {
  if (src == nullptr || dst == nullptr || rates_ == nullptr) return std::nullopt;
  return guardedOr(*platform_.log, "Looking a rate up", std::optional<Rate>(),
                   [&] { return rates_->find(*src, *dst); });
}

std::optional<Value> RateManager::valueForKey(std::string_view name) const {
  return guardedOr(*platform_.log, "Reading a member by name", std::optional<Value>(),
                   [&]() -> std::optional<Value> {
                     if (name == "serviceMessage") return Value(serviceMessage());
                     if (name == "lastUpdate") return lastUpdate() ? Value(*lastUpdate()) : Value();
                     return NSObject::valueForKey(name);
                   });
}

bool RateManager::setValueForKey(std::string_view name, const Value& value) {
  if (name == "serviceMessage" && value.string() != nullptr) {
    return guarded(*platform_.log, "Setting the service's message",
                   [&] { setServiceMessage(*value.string()); });
  }
  if (name == "lastUpdate" && (value.date() != nullptr || value.isNull())) {
    setLastUpdate(value.date() != nullptr ? std::optional(*value.date()) : std::nullopt);
    return true;
  }
  return NSObject::setValueForKey(name, value);
}

std::optional<Value> RateManager::perform(std::string_view selector, const Array& arguments) {
  if (selector == "tryLoadRatesFromQTXServer" && arguments.empty()) {
    tryLoadRatesFromQTXServer();
    return Value();
  }
  return NSObject::perform(selector, arguments);
}

RateManager& rateManager() {
  static NoDestructor<RateManager> manager;
  return *manager;
}

}  // namespace fexora
