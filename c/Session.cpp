#include "c/Session.h"

#include <chrono>
#include <cmath>
#include <new>
#include <utility>

#include "fexora/platform/base/Guarded.h"
#include "fexora/platform/loop/Clocks.h"

#include "programs/sources/TakenTables.h"

using fexora::c::SessionRates;
using fexora::c::SessionRatesRef;

namespace {

double secondsOf(const std::optional<fexora::Date>& date) {
  return date ? date->secondsSince1970() : std::nan("");
}

}  // namespace

fexora_session::fexora_session(const char* folder, std::uint32_t flags)
    : flags_(flags),
      folder_(folder != nullptr ? std::optional<std::string>(folder) : std::nullopt) {
  token_ = notifications_.addObserver(fexora::fileWatcherUpdate, [this] { isReloaded_ = true; });
  auto& catalogue = fexora::currencyManager();
  store_ = folder_ ? std::make_unique<fexora::StoreManager>(platform_, &catalogue, *folder_)
                   : std::make_unique<fexora::StoreManager>(platform_, &catalogue);
  store_->setReconcilesAfterSkip(true);
  rates_ = std::make_unique<fexora::RateManager>(platform_, &catalogue, store_.get());
  if ((flags & FEXORA_ANY_RATES) == 0) rates_->setAnswerCheck(fexora::plausible());
  readStore();
}

fexora::Platform fexora_session::ownPlatform() {
  fexora::Platform own = fexora::Platform::process();
  own.files = isWritable() ? &fexora::Files::process() : &readOnly_;
  own.loop = &loop_;
  own.folderWatch = &watch_;
  own.notifications = &notifications_;
  own.log = &log_;
  return own;
}

fexora::c::Outcome fexora_session::open(const char* folder, std::uint32_t flags,
                                        std::unique_ptr<fexora_session>& session) {
  if ((flags & ~std::uint32_t{FEXORA_WRITABLE | FEXORA_ANY_RATES}) != 0) {
    return fexora::c::misuse("there is no such flag");
  }
  if (folder != nullptr && *folder != '\0' && *folder != '/') {
    return fexora::c::misuse("the folder of a store is named by an absolute path");
  }
  std::unique_ptr<fexora_session> made(new fexora_session(folder, flags));
  if (!made->loop_.isOpen() || made->cancelled_.descriptor() < 0) {
    return {FEXORA_STORE, "the process has no descriptors left"};
  }
  Outcome outcome = made->problem();
  if (outcome.isOk()) session = std::move(made);
  return outcome;
}

// What keeps a store from being what was asked for.
fexora::c::Outcome fexora_session::problem() const {
  const bool isInMemory = folder_ && folder_->empty();
  const bool isMissing = store_->fileURL().empty() && !isInMemory;
  if (isMissing && (folder_ || isWritable())) return {FEXORA_STORE, store_->loadProblem()};
  if (isWritable() && !store_->saveProblem().empty()) return {FEXORA_STORE, store_->saveProblem()};
  return {};
}

SessionRatesRef fexora_session::rates() const {
  const std::lock_guard lock(tableMutex_);
  return table_;
}

// Under the lock, or before anybody else knows the session.
void fexora_session::readStore() {
  isReloaded_ = false;
  fexora::seedBundledRates(*store_);
  auto table =
      std::make_shared<const SessionRates>(*store_, secondsOf(rates_->freshness().published));
  const std::lock_guard lock(tableMutex_);
  table_ = std::move(table);
}

fexora::Freshness fexora_session::freshness() {
  const std::lock_guard lock(mutex_);
  return rates_->freshness();
}

std::vector<const char*> fexora_session::selection() {
  const fexora::c::Codes& codes = fexora::c::Codes::all();
  const std::lock_guard lock(mutex_);
  std::vector<const char*> selected;
  for (const auto& currency : store_->loadCurrencies()) {
    const std::uint32_t place = codes.place(currency->code());
    if (place != fexora::c::Codes::kNone) selected.push_back(codes[place]);
  }
  return selected;
}

fexora::c::Outcome fexora_session::saved() const {
  if (store_->saveProblem().empty()) return {};
  return {FEXORA_STORE, store_->saveProblem()};
}

fexora::c::Outcome fexora_session::take(const fexora::Response& answer,
                                        fexora::RatesAnswer::Origin origin) {
  const std::lock_guard lock(mutex_);
  return taken(rates_->takeAnswer(answer, origin, isWritable()));
}

fexora::c::Outcome fexora_session::take(std::vector<fexora::RatesTable> tables) {
  const std::lock_guard lock(mutex_);
  return taken(rates_->takeTables(std::move(tables), isWritable()));
}

fexora::c::Outcome fexora_session::taken(const std::optional<fexora::ResponseError>& rejected) {
  if (rejected && rejected->message == fexora::kOutOfMemory) throw std::bad_alloc();
  if (rejected) return {FEXORA_REFUSED, "the rates were not taken: " + rejected->message};
  readStore();
  return isWritable() ? saved() : Outcome();
}

std::string fexora_session::ratesFrom() const {
  const std::lock_guard lock(mutex_);
  return store_->ratesFrom();
}

fexora::c::Outcome fexora_session::show(double amount, const fexora::CurrencyRef& currency) {
  if (!isWritable()) return fexora::c::misuse("the session was not opened for writing");
  const std::lock_guard lock(mutex_);
  store_->saveSourceCurrency(currency, amount, true);
  if (isReloaded_) readStore();
  return saved();
}

// Made at first use, under historyMutex_; null for a session in memory.
fexora::RateHistory* fexora_session::history() {
  if (history_ == nullptr) {
    const std::lock_guard lock(mutex_);
    const std::string& folder = store_->applicationDocumentsDirectory();
    if (!folder.empty()) history_ = fexora::rateHistory(folder, *platform_.files, log_);
  }
  return history_.get();
}

void fexora_session::keep(const std::vector<fexora::PublishedTable>& tables) {
  if (!isWritable()) return;
  fexora::guarded(log_, "Keeping the rates for later", [&] {
    const std::lock_guard lock(historyMutex_);
    fexora::RateHistory* const past = history();
    if (past == nullptr) return;
    const fexora::Kept kept = past->keep(tables, fexora::wallClockSeconds());
    if (!kept.notice.empty()) log_.write(kept.notice);
    if (!kept.problem.empty()) log_.write("The rates are not kept for later: " + kept.problem);
  });
}

fexora::c::Outcome fexora_session::on(const std::string& day, std::uint32_t from, std::uint32_t to,
                                      fexora::PastQuestion question, fexora::PastRate& found) {
  const auto when = fexora::dayFromIsoText(day);
  if (!when) return fexora::c::misuse("expected a day like 2024-02-29");
  if (from == to) {
    found = {1.0, *when, "", fexora::PastRate::How::printed};
    return {};
  }
  for (std::string& source : question.sources) source = fexora::sources::nameInHistory(source);
  const fexora::c::Codes& codes = fexora::c::Codes::all();
  const std::lock_guard lock(historyMutex_);
  fexora::RateHistory* const past = history();
  auto rate = past != nullptr ? past->on(*when, codes[from], codes[to], question) : std::nullopt;
  if (!rate && past != nullptr && !past->problem().empty()) {
    return {FEXORA_STORE, past->problem()};
  }
  if (!rate) {
    return {FEXORA_NO_RATE, std::string("there is no rate of ") + codes[from] + " in " + codes[to] +
                                " of " + day + ", nor of the days before it that count"};
  }
  found = *std::move(rate);
  return {};
}

bool fexora_session::look() {
  const std::lock_guard lock(mutex_);
  loop_.runReady();
  const bool isChanged = isReloaded_;
  if (isChanged) readStore();
  return isChanged;
}

void fexora_session::cancel() noexcept {
  cancels_.fetch_add(1);
  cancelled_.wake();
}

fexora::NetOptions fexora_session::netOptions() const {
  fexora::NetOptions options = fexora::processNetOptions();
  if (!isWritable() || (folder_ && folder_->empty())) {
    options.cacheFolder.clear();
  } else if (folder_) {
    options.container = *folder_;
  }
  return options;
}

fexora_session::Turn::Turn(fexora_session& session, double until)
    : session_(session), cancelsBefore_(session.cancels_) {
  std::unique_lock lock(session.turnMutex_);
  const auto left = std::chrono::duration<double>(until - fexora::monotonicClockSeconds());
  isOurs_ = session.turn_.wait_for(lock, left, [&] { return !session.isTaken_; });
  if (!isOurs_) return;
  session.isTaken_ = true;
  session.cancelled_.clear();
  // One that came meanwhile may have been cleared with the older ones.
  if (isCancelled()) session.cancelled_.wake();
}

fexora_session::Turn::~Turn() {
  if (!isOurs_) return;
  {
    const std::lock_guard lock(session_.turnMutex_);
    session_.isTaken_ = false;
  }
  session_.turn_.notify_all();
}
