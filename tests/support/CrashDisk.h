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

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fexora/platform/files/Files.h"

namespace fexora::test {

class CrashDisk final : public Files {
 public:
  // A write takes at most `writeBytes`, so that a save has several.
  explicit CrashDisk(std::size_t writeBytes = SIZE_MAX) : writeBytes_(writeBytes) {
    add({true, 0755, 0, {}, {}});
  }

  // Called before each operation that changes the disk or its durability: everything that
  // powerCuts() gives at that moment is what a cut just then may leave.
  void setObserver(std::function<void()> observer) { observer_ = std::move(observer); }

  // Calls `judge` with each disk that a power cut now may leave.
  void powerCuts(const std::function<void(CrashDisk&)>& judge) const {
    std::size_t count = 1;
    for (const Change& change : pending_) count *= change.fates;
    for (std::size_t pick = 0; pick < count; ++pick) {
      CrashDisk left(writeBytes_);
      left.durable_ = durable_;
      left.time_ = time_;
      std::size_t rest = pick;
      for (const Change& change : pending_) {
        change.apply(left.durable_.at(change.inode), rest % change.fates);
        rest /= change.fates;
      }
      left.now_ = left.durable_;
      judge(left);
    }
  }

  // The file's bytes; nothing when there is no such file.
  std::optional<std::string> content(const std::string& path) const {
    const Number number = find(path);
    if (number == 0 || now_.at(number).isFolder) return std::nullopt;
    return now_.at(number).bytes;
  }
  // Writes the file and flushes it with its name.
  void put(const std::string& path, std::string bytes) {
    const std::filesystem::path whole = path;
    const Number folder = find(whole.parent_path());
    const Number number = add({false, 0600, ++time_, std::move(bytes), {}});
    for (Inodes* inodes : {&now_, &durable_}) inodes->at(folder).names[whole.filename()] = number;
  }

  FileResult<Handle> openForReading(const std::string& path) override { return open(find(path)); }
  FileResult<Handle> openFolder(const std::string& path) override { return open(find(path)); }
  FileResult<Handle> createExclusive(const std::string& path, std::uint32_t mode) override {
    const auto error = make(path, {false, mode, ++time_, {}, {}});
    return error ? error : open(find(path));
  }
  std::error_code close(Handle handle) override {
    return failure(open_.erase(handle) == 0, std::errc::bad_file_descriptor);
  }
  FileResult<std::size_t> read(Handle handle, std::span<char> buffer) override {
    Open& open = open_.at(handle);
    const std::size_t count = now_.at(open.inode).bytes.copy(buffer.data(), buffer.size(), open.at);
    open.at += count;
    return count;
  }
  FileResult<std::size_t> write(Handle handle, std::string_view bytes) override {
    Open& open = open_.at(handle);
    const std::string part(bytes.substr(0, writeBytes_));
    // Not at all, its first half, or whole.
    change({open.inode, 3, [part, at = open.at](Inode& inode, std::size_t fate) {
              const std::size_t size = fate == 2 ? part.size() : part.size() * fate / 2;
              if (fate == 0) return;
              inode.bytes.resize(std::max(inode.bytes.size(), at + size));
              inode.bytes.replace(at, size, part, 0, size);
            }});
    now_.at(open.inode).modified = ++time_;
    open.at += part.size();
    return part.size();
  }
  std::error_code flush(Handle handle) override {
    observer_();
    const Number number = open_.at(handle).inode;
    durable_.at(number) = now_.at(number);
    std::erase_if(pending_, [&](const Change& change) { return change.inode == number; });
    return {};
  }
  std::error_code lock(Handle handle) override {
    Open& mine = open_.at(handle);
    mine.locks = std::none_of(open_.begin(), open_.end(), [&](const auto& other) {
      return other.first != handle && other.second.inode == mine.inode && other.second.locks;
    });
    return failure(!mine.locks, std::errc::resource_unavailable_try_again);
  }
  FileResult<FileStatus> status(Handle handle) override {
    return statusOfInode(open_.at(handle).inode);
  }
  std::error_code changeOwner(Handle /*handle*/, std::uint32_t /*owner*/,
                              std::uint32_t /*group*/) override {
    return {};
  }
  FileResult<FileStatus> statusOf(const std::string& path) override {
    return statusOfInode(find(path));
  }
  std::error_code rename(const std::string& from, const std::string& to) override {
    const Number number = find(from);
    if (number == 0) return missing();
    return changeName(to, number, std::filesystem::path(from).filename());
  }
  std::error_code link(const std::string& from, const std::string& to) override {
    const Number number = find(from);
    if (number == 0) return missing();
    return find(to) != 0 ? taken() : changeName(to, number);
  }
  std::error_code remove(const std::string& path) override {
    return find(path) != 0 ? changeName(path, 0) : missing();
  }
  std::error_code makeFolder(const std::string& path, std::uint32_t mode) override {
    return make(path, {true, mode, ++time_, {}, {}});
  }
  FileResult<std::vector<std::string>> list(const std::string& folder) override {
    const Number number = find(folder);
    if (number == 0) return missing();
    std::vector<std::string> names;
    for (const auto& [name, to] : now_.at(number).names) names.push_back(name);
    return names;
  }
  std::error_code mayChange(const std::string& /*folder*/) override { return {}; }
  std::uint32_t user() override { return 1000; }

 private:
  using Number = std::uint64_t;  // of an inode; 0 for none
  static constexpr Number kRoot = 1;
  struct Inode {
    bool isFolder;
    std::uint32_t mode;
    std::int64_t modified;
    std::string bytes;                    // a file's
    std::map<std::string, Number> names;  // a folder's
  };
  using Inodes = std::map<Number, Inode>;
  // What an inode's next flush makes durable. Of its `fates` a cut chooses one: 0 is nothing of it,
  // the last is all.
  struct Change {
    Number inode;
    std::size_t fates;
    std::function<void(Inode&, std::size_t fate)> apply;
  };
  struct Open {
    Number inode;
    std::size_t at = 0;
    bool locks = false;
  };

  static std::error_code failure(bool failed, std::errc error) {
    return failed ? std::make_error_code(error) : std::error_code();
  }
  static std::error_code missing() { return failure(true, std::errc::no_such_file_or_directory); }
  static std::error_code taken() { return failure(true, std::errc::file_exists); }

  Number find(const std::filesystem::path& path) const {
    Number at = kRoot;
    for (const auto& part : path.relative_path()) {
      if (part.empty() || part == ".") continue;
      const auto& names = now_.at(at).names;
      const auto entry = names.find(part);
      if (entry == names.end()) return 0;
      at = entry->second;
    }
    return at;
  }
  FileResult<FileStatus> statusOfInode(Number number) const {
    if (number == 0) return missing();
    const Inode& inode = now_.at(number);
    FileStatus status;
    status.type = inode.isFolder ? FileStatus::Type::folder : FileStatus::Type::file;
    status.size = inode.bytes.size();
    status.device = 1;
    status.inode = number;
    for (const auto& [folder, other] : now_) {
      for (const auto& [name, to] : other.names) status.links += to == number ? 1 : 0;
    }
    status.mode = inode.mode;
    status.owner = 1000;
    status.modified = inode.modified;
    return status;
  }
  void change(Change change) {
    observer_();
    change.apply(now_.at(change.inode), change.fates - 1);
    pending_.push_back(std::move(change));
  }
  // From now on `path` stands for `to`, and `gone` in its folder for nothing.
  std::error_code changeName(const std::filesystem::path& path, Number to,
                             const std::string& gone = {}) {
    const Number folder = find(path.parent_path());
    if (folder == 0) return missing();
    change({folder, 2, [=, name = path.filename().string()](Inode& inode, std::size_t fate) {
              if (fate == 0) return;
              inode.names.erase(gone);
              inode.names.erase(name);
              if (to != 0) inode.names[name] = to;
            }});
    return {};
  }
  // An inode without a name.
  Number add(const Inode& inode) {
    const Number number = durable_.size() + 1;
    now_[number] = durable_[number] = inode;
    return number;
  }
  std::error_code make(const std::string& path, const Inode& inode) {
    return find(path) != 0 ? taken() : changeName(path, add(inode));
  }
  FileResult<Handle> open(Number inode) {
    if (inode == 0) return missing();
    open_[++lastHandle_] = {inode};
    return lastHandle_;
  }

  std::size_t writeBytes_;
  Inodes durable_;  // as the flushes so far guarantee it
  Inodes now_;
  std::vector<Change> pending_;  // between the two
  std::map<Handle, Open> open_;
  Handle lastHandle_ = 100;
  std::int64_t time_ = 0;
  std::function<void()> observer_ = [] {};
};

}  // namespace fexora::test
