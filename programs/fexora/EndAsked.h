// The signals that ask the program to end while it reads lines: Ctrl+C, and those that end a
// session.
#pragma once

#include <array>
#include <csignal>
#include <cstddef>

namespace fexora::program {

// While it lives these signals end the reading of standard input, and no more; a second one of the
// same kind ends the program where it stands. What is ignored stays so. One at a time, main thread.
class EndAsked {
 public:
  EndAsked();
  ~EndAsked();
  EndAsked(const EndAsked&) = delete;
  EndAsked& operator=(const EndAsked&) = delete;

  // Waits until standard input can be read, or has ended; false once a signal has come.
  bool awaitInput() const;
  // Ends the program by the signal that came, if any, as if nobody had held it up.
  void end();

 private:
  static constexpr std::array<int, 3> kSignals = {SIGINT, SIGTERM, SIGHUP};

  std::array<struct sigaction, kSignals.size()> before_{};
  sigset_t signals_{};
};

}  // namespace fexora::program
