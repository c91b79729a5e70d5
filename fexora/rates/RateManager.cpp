#include "fexora/rates/RateManager.h"

#include "fexora/platform/base/Environment.h"
#include "fexora/platform/base/Guarded.h"
#include "fexora/platform/base/Limits.h"
#include "fexora/platform/base/NoDestructor.h"
#include "fexora/platform/network/NetworkManager.h"
#include "fexora/platform/text/NumberText.h"
#include "fexora/platform/text/OneLine.h"
#include "fexora/rates/PairRates.h"

namespace fexora {

std::string defaultRatesURL() {
  return environment("FEXORA_RATES_URL").value_or(FEXORA_RATES_URL);
}

namespace {

constexpr std::string_view kLoading = "Loading rates";

const ResponseError& outOfMemory() {
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
  if (!isDone && !self.expired()) tell(complete, false, &outOfMemory());
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
  const bool isDone = guarded(*platform_.log, "Taking new rates", [&] {
    if (auto reason = reasonAgainst(answer)) {
      // Any check's: it may quote the answer.
      makeOneLine(*reason);
      platform_.log->write("New rates were not taken: " + *reason);
      rejected.emplace(ResponseError{ResponseError::Kind::implausible, {}, *std::move(reason), 0});
    } else {
      keep(answer, origin, sync);
    }
  });
  if (!isDone) return outOfMemory();
  return rejected;
}

std::optional<std::string> RateManager::reasonAgainst(const Response& answer) const {
  if (!check_) return std::nullopt;
  const Date now(platform_.loop->wallSeconds());
  const HeldRates held{store().loadUSDRates().value_or(USDRates_), freshness({}, now).published,
                       now};
  std::optional<std::string> reason = "the check of the rates failed";
  // A copy, since it may set another one.
  quietly(*platform_.log, "A check of the rates",
          [&, check = check_] { reason = check(answer, held); });
  return reason;
}

void RateManager::keep(const Response& answer, RatesAnswer::Origin origin, bool sync) {
  // A host may have made the answer itself.
  auto message = oneLine(answer.serviceMessage());
  RatesAnswer said{answer.published(), answer.source(), origin};
  filterRatesForLocalCurrencies(answer.rates());
  serviceMessage_ = std::move(message);
  store().announceRates(std::move(said));
  store().saveUSDRates(USDRates_, sync);
}

bool RateManager::loadStoredRates(std::optional<std::vector<CurrencyRef>> forCurrencies) {
  const bool isDone = guarded(*platform_.log, kLoading, [&] {
    currencies_ = forCurrencies ? *std::move(forCurrencies) : catalogue().currencies();
    if (const auto stored = store().loadUSDRates()) {
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
