#include "programs/desktop/EndSignals.h"

#include <QApplication>
#include <QSocketNotifier>
#include <array>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace fexora::desktop {
namespace {

std::array<int, 2> ends{-1, -1};
bool isEnding = false;

// All that a handler may do; the loop does the rest.
void onSignal(int /*number*/) {
  constexpr char kByte = 0;
  [[maybe_unused]] const ssize_t written = write(ends[1], &kByte, 1);
}

}  // namespace

void endOnSignals() {
  if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
  auto* const notifier =
      new QSocketNotifier(ends[0], QSocketNotifier::Read, QCoreApplication::instance());
  QObject::connect(notifier, &QSocketNotifier::activated, notifier, [notifier] {
    notifier->setEnabled(false);
    isEnding = true;
    QApplication::quit();
  });
  struct sigaction action = {};
  action.sa_handler = onSignal;
  // A second one ends the process at once.
  action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) sigaction(number, &action, nullptr);
}

bool isEndingBySignal() noexcept {
  return isEnding;
}

}  // namespace fexora::desktop
