// A session: a store, the rates of one moment made from it, and what both stand on.
//
// Any thread, several at once. One lock is for all that touches the store and its loop; conversions
// take only that of the reference to the rates, so that they wait for no save. Neither is held
// while anything is read or fetched.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "fexora/fexora.h"

#include "c/DollarRates.h"
#include "c/EpollLoop.h"
#include "c/Forks.h"
#include "c/Outcome.h"
#include "c/SessionLog.h"

struct fexora_session {
 public:
  using Outcome = fexora::c::Outcome;

  // See fexora_open(). May throw std::bad_alloc.
  static Outcome open(const char* folder, std::uint32_t flags,
                      std::unique_ptr<fexora_session>& session);
  fexora_session(const fexora_session&) = delete;
  fexora_session& operator=(const fexora_session&) = delete;
  ~fexora_session() = default;

  // False in a child of fork().
  bool isOfThisProcess() const noexcept { return process_ == fexora::c::processGeneration(); }
  bool isWritable() const noexcept { return (flags_ & FEXORA_WRITABLE) != 0; }
  fexora::c::SessionLog& log() noexcept { return log_; }

  // The rates as they are now; never null.
  fexora::c::SessionRatesRef rates() const;
  fexora::Freshness freshness();
  std::vector<const char*> selection();
  // Takes an answer in place of the rates, under the check.
  Outcome take(const fexora::Response& answer, fexora::RatesAnswer::Origin origin);
  Outcome take(std::vector<fexora::RatesTable> tables);
  Outcome show(double amount, const fexora::CurrencyRef& currency);

  // Keeps tables for the questions after the past, where the session may write and has a folder.
  // What cannot be kept is said in the log: the rates were taken all the same.
  void keep(const std::vector<fexora::PublishedTable>& tables);
  // The past's rate.
  Outcome on(const std::string& day, std::uint32_t from, std::uint32_t to,
             fexora::PastQuestion question, fexora::PastRate& found);

  int descriptor() const noexcept { return loop_.descriptor(); }
  // Whether the store was read anew.
  bool look();

  // Runs `body(session, isCancelled)` while no other refresh of this session runs.
  class Turn;
  void cancel() noexcept;

  fexora::Files& files() noexcept { return *platform_.files; }
  const std::string& ratesURL() const { return rates_->ratesURL(); }
  // The store's setting.
  std::string ratesFrom() const;
  fexora::NetOptions netOptions() const;

 private:
  fexora_session(const char* folder, std::uint32_t flags);
  fexora::Platform ownPlatform();
  Outcome problem() const;
  void readStore();
  Outcome taken(const std::optional<fexora::ResponseError>& rejected);
  Outcome saved() const;
  fexora::RateHistory* history();

  const std::uint32_t flags_;
  const std::optional<std::string> folder_;  // nothing: the person's
  const std::uint64_t process_ = fexora::c::processGeneration();
  fexora::c::SessionLog log_;
  fexora::ReadOnlyFiles readOnly_;
  fexora::c::EpollLoop loop_{log_};
  fexora::InotifyFolderWatch watch_{loop_, log_};
  fexora::NotificationCenter notifications_;
  fexora::Platform platform_ = ownPlatform();
  fexora::NotificationCenter::Token token_;
  bool isReloaded_ = false;
  std::unique_ptr<fexora::StoreManager> store_;
  std::unique_ptr<fexora::RateManager> rates_;

  mutable std::mutex mutex_;  // of all above but the log
  mutable std::mutex tableMutex_;
  fexora::c::SessionRatesRef table_;  // under tableMutex_

  std::mutex historyMutex_;
  std::unique_ptr<fexora::RateHistory> history_;  // under historyMutex_: see history()

  std::atomic<std::uint32_t> cancels_ = 0;
  const fexora::WakeUp cancelled_;
  std::mutex turnMutex_;
  std::condition_variable turn_;
  bool isTaken_ = false;  // under turnMutex_
};

// The right to refresh a session, which one has at a time. A cancel() since it was asked for ends
// it.
class fexora_session::Turn {
 public:
  // `until` on the monotonic clock.
  Turn(fexora_session& session, double until);
  Turn(const Turn&) = delete;
  Turn& operator=(const Turn&) = delete;
  ~Turn();

  // Whether it came before `until`.
  bool isOurs() const noexcept { return isOurs_; }
  bool isCancelled() const noexcept { return session_.cancels_ != cancelsBefore_; }
  // Readable once it is cancelled.
  int descriptor() const noexcept { return session_.cancelled_.descriptor(); }

 private:
  fexora_session& session_;
  const std::uint32_t cancelsBefore_;
  bool isOurs_ = false;
};
