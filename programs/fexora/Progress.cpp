#include "programs/fexora/Progress.h"

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

}  // namespace

Progress::Progress(std::string text)
    : text_(std::move(text)), begin_(Platform::process().loop->monotonicSeconds()) {
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
  const std::string time = std::string(" ").append(fixedText(passed, 1)).append(" s");
  const std::size_t room = columns() > time.size() ? columns() - time.size() - 1 : 0;
  std::fputs(("\r\033[K" + text_.substr(0, room) + time).c_str(), stderr);
  shown_ = true;
}

}  // namespace fexora::program
