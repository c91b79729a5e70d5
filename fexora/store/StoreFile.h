// The store's file: reads it, replaces it whole, and knows what was last seen of it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <system_error>

#include "fexora/platform/Platform.h"
#include "fexora/platform/values/Value.h"

namespace fexora {

class DictionaryCodec;

// A file that holds no dictionary is kept aside, by a hard link beside it (a copy where there are
// none), before a save replaces it; of several such the newest limits::kUnreadableCopies stay. One
// that cannot be opened or read for now is not replaced. A value that no file can hold is not
// saved: its key keeps what it had in the file. Main thread. What takes memory may throw
// std::bad_alloc; then the file is whole, the old one or the new.
class FEXORA_API StoreFile {
 public:
  enum class State : std::uint8_t {
    inaccessible,  // could not be looked for, opened or read, or not yet: not replaced
    missing,
    usable,  // read or written last
    damaged  // holds something else than a dictionary: kept aside before it is replaced
  };
  struct Reading {
    State state = State::inaccessible;
    Dictionary content;   // of a usable file
    std::string problem;  // one line: why a file that is there is not usable
  };
  struct Saving {
    std::string problem;    // one line; empty when all of it is written
    bool isUnread = false;  // not written, since it can be read again: what it holds comes first
  };

  // `platform` outlives the file.
  explicit StoreFile(Platform& platform) noexcept;
  StoreFile(const StoreFile&) = delete;
  StoreFile& operator=(const StoreFile&) = delete;
  ~StoreFile();

  // Another file is meant from now on, and whatever it holds may be replaced.
  void forget() noexcept;

  // The file at `path`, which is the same at each call until forget().
  Reading read(const std::string& path);
  // What was read is not taken: it is not to be replaced, either.
  void distrust() noexcept { state_ = State::inaccessible; }
  // Looks first at a file that was inaccessible. A problem also when the new file stands, but lacks
  // a value that no file can hold, or may not survive a power cut.
  Saving save(const std::string& path, const Dictionary& content);
  // Whether the file is another one than was last read or written.
  bool isReplaced(const std::string& path) const;

 private:
  DictionaryCodec& codec();
  std::string replace(const std::string& path, const std::string& failed,
                      const Dictionary& content);
  std::error_code keepAside(const std::string& path);
  void dropOldestAside(const std::string& folder, const std::string& newest);

  Platform& platform_;
  State state_ = State::inaccessible;
  FileStatus known_;  // the file last read, written or rejected
  FileStatus aside_;  // the file last kept aside
  std::unique_ptr<DictionaryCodec> codec_;
};

}  // namespace fexora
