#include "programs/fexora/Progress.h"

#include <cstdint>
#include <cstdio>
#include <utility>

#include <sys/ioctl.h>
#include <unistd.h>

#include "fexora/platform/text/NumberText.h"

namespace fexora::program {
namespace {

constexpr double kStep = 0.5;

// A line that wraps could not be wiped.
std::size_t columns() {
  winsize size{};
  constexpr std::size_t kUsual = 80;
  return ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : kUsual;
}

std::string kilobytes(std::uint64_t bytes) {
  constexpr std::uint64_t kKilobyte = 1024;
  return integerText(static_cast<std::int64_t>((bytes + kKilobyte - 1) / kKilobyte));
}

// ", 12 of 48 KB"
std::string receivedText(const Transfer::Progress& progress) {
  if (progress.received == 0) return {};
  const std::string total = progress.total ? " of " + kilobytes(*progress.total) : "";
  return ", " + kilobytes(progress.received) + total + " KB";
}

}  // namespace

Progress::Progress(std::string text, const Transfer::Progress& received)
    : text_(std::move(text)),
      received_(received),
      begin_(Platform::process().loop->monotonicSeconds()) {
  if (::isatty(STDERR_FILENO) != 0) schedule();
}

Progress::~Progress() {
  if (timer_ != nullptr) timer_->invalidate();
  if (shown_) std::fputs("\r\033[K", stderr);
}

void Progress::schedule() {
  timer_ = Platform::process().loop->scheduleTimer(kStep, [this] {
    show();
    schedule();
  });
}

void Progress::show() {
  const double passed = Platform::process().loop->monotonicSeconds() - begin_;
  const std::string rest = receivedText(received_) + ", " + fixedText(passed, 1) + " s";
  const std::size_t room = columns() > rest.size() ? columns() - rest.size() - 1 : 0;
  std::fputs(("\r\033[K" + text_.substr(0, room) + rest).c_str(), stderr);
  shown_ = true;
}

}  // namespace fexora::program
