// A disk in memory that knows what a power cut may leave of it.
//
// The model is the weakest that POSIX allows, not that of one file system: of a file everything up
// to its last flush is there; of each later write nothing, the first half or all, each write for
// itself, so that a later one may be there without an earlier (bytes in between read as zero). Of a
// folder each change of a name up to its last flush is there; each later one is there or not, each
// for itself. A flush of a file says nothing about its name. A flush of a folder says nothing about
// the folder's own name in the folder above.
//
// Links and permissions are not played; locks are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "fexora/platform/files/Files.h"

namespace fexora::test {

class CrashDisk final : public Files {
 public:
  // A write takes at most `writeBytes`, so that a save has several.
  explicit CrashDisk(std::size_t writeBytes = SIZE_MAX);
  ~CrashDisk() override;

  // Called before each operation that changes the disk or its durability: everything that
  // powerCuts() gives at that moment is what a cut just then may leave.
  void setObserver(std::function<void()> observer) { observer_ = std::move(observer); }

  // Calls `judge` with each disk that a power cut now may leave.
  void powerCuts(const std::function<void(CrashDisk&)>& judge) const;
  // A copy that has forgotten its handles, as after a start.
  std::unique_ptr<CrashDisk> restarted() const;

  // The file's bytes; nothing when there is no such file.
  std::optional<std::string> content(const std::string& path) const;
  // Writes the file and flushes it with its name.
  void put(const std::string& path, std::string bytes);

  FileResult<Handle> openForReading(const std::string& path) override;
  FileResult<Handle> openFolder(const std::string& path) override;
  FileResult<Handle> createExclusive(const std::string& path, std::uint32_t mode) override;
  std::error_code close(Handle handle) override;
  FileResult<std::size_t> read(Handle handle, std::span<char> buffer) override;
  FileResult<std::size_t> write(Handle handle, std::string_view bytes) override;
  std::error_code flush(Handle handle) override;
  std::error_code lock(Handle handle) override;
  FileResult<FileStatus> status(Handle handle) override;
  std::error_code changeOwner(Handle handle, std::uint32_t owner, std::uint32_t group) override;
  FileResult<FileStatus> statusOf(const std::string& path) override;
  std::error_code rename(const std::string& from, const std::string& to) override;
  std::error_code link(const std::string& from, const std::string& to) override;
  std::error_code remove(const std::string& path) override;
  std::error_code makeFolder(const std::string& path, std::uint32_t mode) override;
  FileResult<std::vector<std::string>> list(const std::string& folder) override;
  std::error_code mayChange(const std::string& /*folder*/) override { return {}; }
  std::uint32_t user() override { return 1000; }

 private:
  using Number = std::uint64_t;  // of an inode
  struct Write {
    std::size_t at;
    std::string bytes;
  };
  // A change of one folder: the name stands for `to`, or for nothing; a rename has a second name.
  struct Change {
    std::string name;
    Number to = 0;
    std::string gone;  // with the same change
  };
  struct Inode {
    bool isFolder = false;
    std::uint32_t mode = 0;
    std::int64_t modified = 0;
    std::string flushed;                  // a file's bytes that will be there
    std::vector<Write> writes;            // since
    std::map<std::string, Number> names;  // a folder's, that will be there
    std::vector<Change> changes;          // since

    std::string bytes() const;
    std::map<std::string, Number> entries() const;
    Inode settled(std::size_t& pick) const;
  };
  struct Open {
    Number inode;
    std::size_t at = 0;
    bool locks = false;
  };

  Number find(const std::string& path) const;
  std::pair<Number, std::string> parentOf(const std::string& path) const;
  FileStatus statusOfInode(Number number) const;
  std::uint64_t linksTo(Number number) const;
  std::error_code change(const std::string& path, Change change);
  std::error_code make(const std::string& path, std::uint32_t mode, bool isFolder);
  Handle open(Number inode);

  std::size_t writeBytes_;
  std::map<Number, Inode> inodes_;
  std::map<Handle, Open> open_;
  Number lastInode_ = 1;
  Handle lastHandle_ = 100;
  std::int64_t time_ = 0;
  std::function<void()> observer_ = [] {};
};

}  // namespace fexora::test
