// The other process: replaces a file in a watched folder whenever it is told to.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include <sys/types.h>

namespace fexora::bench {

// Nanoseconds on the clock that all processes share.
std::int64_t now();

// Forked when made, before the process has threads or a loop of its own; ends with this.
class Writer {
 public:
  // Replaces `path` by the two contents in turn, each through a temporary file in another folder,
  // so that one replacement is one event in the file's.
  Writer(const std::string& path, const std::string& one, const std::string& other);
  Writer(const Writer&) = delete;
  Writer& operator=(const Writer&) = delete;
  ~Writer();

  // Asks for one replacement and returns at once.
  void replace();
  // When the last rename began; meaningful once a watch has told of it.
  std::int64_t renamedAt() const;

 private:
  struct Shared {
    std::atomic<std::int64_t> renamedAt;
  };

  Shared* shared_;
  int order_ = -1;  // a pipe on which each byte is one order
  pid_t child_ = -1;
};

}  // namespace fexora::bench
