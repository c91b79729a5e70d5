// Where the library's few log lines go: standard error unless the host says otherwise.
#pragma once

#include <functional>
#include <string_view>

#include "fexora/platform/base/Export.h"

namespace fexora {

class FEXORA_API Log {
 public:
  Log() = default;
  Log(const Log&) = delete;
  Log& operator=(const Log&) = delete;
  virtual ~Log();

  // One line, without its end. Any thread; must not throw and must not call back into the library.
  virtual void write(std::string_view line) = 0;

  // The library's own, which sends each line to standard error in one write, and the one that the
  // process uses: see Platform::process().
  static Log& builtIn();
  static Log& process();
  // Sends the lines of the library's own log to `sink` instead; an empty function silences them.
  // Main thread, before other threads use the library.
  static void setProcessSink(std::function<void(std::string_view)> sink);
};

}  // namespace fexora
