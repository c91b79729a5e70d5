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

  // The process's log. By default each line goes to standard error in one write.
  static Log& process();
  // Sends the process's lines to `sink` instead; an empty function silences them. Main thread,
  // before other threads use the library.
  static void setProcessSink(std::function<void(std::string_view)> sink);
};

}  // namespace fexora
