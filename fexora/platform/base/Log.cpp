#include "fexora/platform/base/Log.h"

#include <array>
#include <mutex>
#include <utility>

#include <sys/uio.h>
#include <unistd.h>

#include "fexora/platform/base/NoDestructor.h"

namespace fexora {
namespace {

void writeToStandardError(std::string_view line) {
  char end = '\n';
  // The system only reads the parts, whatever the type of the record says.
  const std::array<iovec, 2> parts{{{const_cast<char*>(line.data()), line.size()}, {&end, 1}}};
  // A log line that cannot be written has nowhere to be reported.
  [[maybe_unused]] const ssize_t written = ::writev(STDERR_FILENO, parts.data(), parts.size());
}

class ProcessLog final : public Log {
 public:
  void write(std::string_view line) override {
    const std::lock_guard lock(mutex_);
    if (sink_) sink_(line);
  }
  void setSink(std::function<void(std::string_view)> sink) {
    const std::lock_guard lock(mutex_);
    sink_ = std::move(sink);
  }

 private:
  std::mutex mutex_;
  std::function<void(std::string_view)> sink_ = writeToStandardError;
};

ProcessLog& processLog() {
  static NoDestructor<ProcessLog> log;
  return *log;
}

}  // namespace

Log::~Log() = default;

Log& Log::builtIn() {
  return processLog();
}

void Log::setProcessSink(std::function<void(std::string_view)> sink) {
  processLog().setSink(std::move(sink));
}

}  // namespace fexora
