#include "fexora/history/RateHistory.h"

#include <utility>

#include "fexora/history/HistoryFile.h"
#include "fexora/platform/base/Library.h"
#include "fexora/platform/base/Log.h"
#include "fexora/platform/files/Files.h"

namespace fexora {
namespace {

using HistoryModuleEntry = RateHistory*(const std::string* folder, Files* files, Log* log);

// Opens the module at the first call that needs it. Whoever asks where nothing was ever kept is
// answered without it.
class LazyHistory final : public RateHistory {
 public:
  LazyHistory(std::string folder, Files& files, Log& log)
      : folder_(std::move(folder)), files_(files), log_(log) {}

  Kept keep(std::span<const PublishedTable> tables, double now) override {
    if (open()) return history_->keep(tables, now);
    Kept none;
    none.problem = problem_;
    return none;
  }
  std::optional<PastRate> on(Day day, std::string_view from, std::string_view to,
                             const PastQuestion& question) override {
    return isThere() ? history_->on(day, from, to, question) : std::nullopt;
  }
  std::vector<std::optional<PastRate>> on(Day day, std::string_view from,
                                          std::span<const std::string> to,
                                          const PastQuestion& question) override {
    if (isThere()) return history_->on(day, from, to, question);
    return std::vector<std::optional<PastRate>>(to.size());
  }
  std::vector<DayRate> between(Day first, Day last, std::string_view from, std::string_view to,
                               const PastQuestion& question) override {
    return isThere() ? history_->between(first, last, from, to, question) : std::vector<DayRate>();
  }
  std::vector<PublishedTable> published(Day day) override {
    return isThere() ? history_->published(day) : std::vector<PublishedTable>();
  }
  std::vector<std::string> replacedOf(Day day) override {
    return isThere() ? history_->replacedOf(day) : std::vector<std::string>();
  }
  HistorySummary summary() override {
    if (isThere()) return history_->summary();
    HistorySummary none;
    none.problem = problem_;
    return none;
  }
  const std::string& problem() const override {
    return history_ != nullptr ? history_->problem() : problem_;
  }

 private:
  bool isThere() {
    if (history_ != nullptr) return true;
    problem_.clear();
    if (folder_.empty()) return false;
    const auto status = files_.statusOf(folder_ + "/" + std::string(kHistoryFile));
    if (!status.ok() && status.error() == std::errc::no_such_file_or_directory) return false;
    return open();
  }

  bool open() {
    if (history_ != nullptr) return true;
    if (folder_.empty()) {
      problem_ = "there is no folder to keep rates of past days in";
      return false;
    }
    std::string reason;
    void* const entry = moduleEntry("history", "fexora_history_module", reason);
    if (entry != nullptr) {
      history_.reset(reinterpret_cast<HistoryModuleEntry*>(entry)(&folder_, &files_, &log_));
      return true;
    }
    problem_ = "there is no history of rates without its module: " + reason;
    log_.write(problem_);
    return false;
  }

  std::string folder_;
  Files& files_;
  Log& log_;
  std::unique_ptr<RateHistory> history_;
  std::string problem_;
};

}  // namespace

RateHistory::~RateHistory() = default;

std::unique_ptr<RateHistory> rateHistory(const std::string& containerPath, Files& files, Log& log) {
  std::string folder = containerPath;
  if (!folder.empty()) folder.append("/").append(kHistoryFolder);
  return std::make_unique<LazyHistory>(std::move(folder), files, log);
}

}  // namespace fexora
