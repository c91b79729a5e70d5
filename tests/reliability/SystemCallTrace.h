// A process's system calls, as strace saw them, played on a disk that knows what a crash may leave.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/CrashDisk.h"

namespace fexora::test {

struct SystemCall {
  std::string name;
  std::vector<std::string> arguments;  // as strace writes them
  std::string result;                  // likewise
};

// Whether the system lets a process be traced.
bool canTrace();

// Runs the command under strace. Nothing where the system does not let a process be traced.
// Fails the test when the command itself fails.
std::optional<std::vector<SystemCall>> traceOf(const std::vector<std::string>& command);

// Plays the calls that touch `folder` on `disk`, which has the folder's parent. `said` is called
// with each text that the process wrote to its standard error. A call that touches the folder and
// is not known here fails the test: the play would no longer be true.
void play(const std::vector<SystemCall>& calls, const std::string& folder, CrashDisk& disk,
          const std::function<void(std::string_view)>& said);

}  // namespace fexora::test
