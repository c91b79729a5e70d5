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
#include <functional>
#include <map>
#include <memory>
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
    inodes_[kRoot].isFolder = true;
    inodes_[kRoot].mode = 0755;
  }

  // Called before each operation that changes the disk or its durability: everything that
  // powerCuts() gives at that moment is what a cut just then may leave.
  void setObserver(std::function<void()> observer) { observer_ = std::move(observer); }

  // Calls `judge` with each disk that a power cut now may leave.
  void powerCuts(const std::function<void(CrashDisk&)>& judge) const {
    std::size_t count = 1;
    for (const auto& [number, inode] : inodes_) {
      for (std::size_t i = 0; i < inode.writes.size(); ++i) count *= 3;
      for (std::size_t i = 0; i < inode.changes.size(); ++i) count *= 2;
    }
    for (std::size_t pick = 0; pick < count; ++pick) {
      const auto disk = restarted();
      std::size_t rest = pick;
      for (auto& [number, inode] : disk->inodes_) inode = inode.settled(rest);
      judge(*disk);
    }
  }
  // A copy that has forgotten its handles, as after a start.
  std::unique_ptr<CrashDisk> restarted() const {
    auto copy = std::make_unique<CrashDisk>(writeBytes_);
    copy->inodes_ = inodes_;
    copy->lastInode_ = lastInode_;
    copy->time_ = time_;
    return copy;
  }

  // The file's bytes; nothing when there is no such file.
  std::optional<std::string> content(const std::string& path) const {
    const Number number = find(path);
    if (number == 0 || inodes_.at(number).isFolder) return std::nullopt;
    return inodes_.at(number).bytes();
  }
  // Writes the file and flushes it with its name.
  void put(const std::string& path, std::string bytes) {
    const auto [parent, name] = parentOf(path);
    const Number number = ++lastInode_;
    inodes_[number] = {false, 0600, ++time_, std::move(bytes), {}, {}, {}};
    inodes_.at(parent).names[name] = number;
  }

  FileResult<Handle> openForReading(const std::string& path) override {
    const Number number = find(path);
    return number != 0 ? open(number) : FileResult<Handle>(missing());
  }
  FileResult<Handle> openFolder(const std::string& path) override {
    const Number number = find(path);
    if (number == 0) return missing();
    if (!inodes_.at(number).isFolder) return std::make_error_code(std::errc::not_a_directory);
    return open(number);
  }
  FileResult<Handle> createExclusive(const std::string& path, std::uint32_t mode) override {
    if (const auto error = make(path, mode, false)) return error;
    return open(lastInode_);
  }
  std::error_code close(Handle handle) override {
    return open_.erase(handle) == 1 ? std::error_code()
                                    : std::make_error_code(std::errc::bad_file_descriptor);
  }
  FileResult<std::size_t> read(Handle handle, std::span<char> buffer) override {
    Open& open = open_.at(handle);
    const std::string bytes = inodes_.at(open.inode).bytes();
    const std::size_t count = std::min(buffer.size(), bytes.size() - open.at);
    std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(open.at), count, buffer.begin());
    open.at += count;
    return count;
  }
  FileResult<std::size_t> write(Handle handle, std::string_view bytes) override {
    observer_();
    Open& open = open_.at(handle);
    const std::string_view part = bytes.substr(0, writeBytes_);
    Inode& inode = inodes_.at(open.inode);
    inode.writes.push_back({open.at, std::string(part)});
    inode.modified = ++time_;
    open.at += part.size();
    return part.size();
  }
  std::error_code flush(Handle handle) override {
    observer_();
    Inode& inode = inodes_.at(open_.at(handle).inode);
    inode.flushed = inode.bytes();
    inode.writes.clear();
    inode.names = inode.entries();
    inode.changes.clear();
    return {};
  }
  std::error_code lock(Handle handle) override {
    Open& mine = open_.at(handle);
    for (const auto& [other, open] : open_) {
      if (other != handle && open.inode == mine.inode && open.locks) {
        return std::make_error_code(std::errc::resource_unavailable_try_again);
      }
    }
    mine.locks = true;
    return {};
  }
  FileResult<FileStatus> status(Handle handle) override {
    return statusOfInode(open_.at(handle).inode);
  }
  std::error_code changeOwner(Handle /*handle*/, std::uint32_t /*owner*/,
                              std::uint32_t /*group*/) override {
    return {};
  }
  FileResult<FileStatus> statusOf(const std::string& path) override {
    const Number number = find(path);
    if (number == 0) return missing();
    return statusOfInode(number);
  }
  std::error_code rename(const std::string& from, const std::string& to) override {
    const Number number = find(from);
    if (number == 0) return missing();
    return change(to, {parentOf(to).second, number, parentOf(from).second});
  }
  std::error_code link(const std::string& from, const std::string& to) override {
    const Number number = find(from);
    if (number == 0) return missing();
    if (find(to) != 0) return std::make_error_code(std::errc::file_exists);
    return change(to, {parentOf(to).second, number, {}});
  }
  std::error_code remove(const std::string& path) override {
    if (find(path) == 0) return missing();
    return change(path, {parentOf(path).second, 0, {}});
  }
  std::error_code makeFolder(const std::string& path, std::uint32_t mode) override {
    return make(path, mode, true);
  }
  FileResult<std::vector<std::string>> list(const std::string& folder) override {
    const Number number = find(folder);
    if (number == 0) return missing();
    std::vector<std::string> names;
    for (const auto& [name, to] : inodes_.at(number).entries()) names.push_back(name);
    return names;
  }
  std::error_code mayChange(const std::string& /*folder*/) override { return {}; }
  std::uint32_t user() override { return 1000; }

 private:
  using Number = std::uint64_t;  // of an inode
  static constexpr Number kRoot = 1;
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

    std::string bytes() const {
      std::string all = flushed;
      for (const Write& write : writes) apply(all, write.at, write.bytes);
      return all;
    }
    std::map<std::string, Number> entries() const {
      auto all = names;
      for (const Change& change : changes) {
        all.erase(change.gone);
        all.erase(change.name);
        if (change.to != 0) all[change.name] = change.to;
      }
      return all;
    }
    // What the part number `pick` of all ways in which this may come out leaves; `pick` is divided
    // by their count.
    Inode settled(std::size_t& pick) const {
      Inode left = *this;
      left.writes.clear();
      left.changes.clear();
      for (const Write& write : writes) {
        const std::size_t fate = std::exchange(pick, pick / 3) % 3;
        const std::size_t size = fate == 2 ? write.bytes.size() : write.bytes.size() * fate / 2;
        if (fate != 0) apply(left.flushed, write.at, write.bytes.substr(0, size));
      }
      for (const Change& change : changes) {
        if (std::exchange(pick, pick / 2) % 2 != 0) left.changes.push_back(change);
      }
      left.names = left.entries();
      left.changes.clear();
      return left;
    }
  };
  struct Open {
    Number inode;
    std::size_t at = 0;
    bool locks = false;
  };

  static void apply(std::string& bytes, std::size_t at, std::string_view part) {
    if (bytes.size() < at + part.size()) bytes.resize(at + part.size(), '\0');
    bytes.replace(at, part.size(), part);
  }
  static std::error_code missing() {
    return std::make_error_code(std::errc::no_such_file_or_directory);
  }

  Number find(const std::string& path) const {
    Number at = kRoot;
    for (std::size_t begin = 0; begin < path.size();) {
      const std::size_t end = std::min(path.find('/', begin), path.size());
      const std::string name = path.substr(begin, end - begin);
      begin = end + 1;
      if (name.empty() || name == ".") continue;
      const auto entries = inodes_.at(at).entries();
      const auto entry = entries.find(name);
      if (entry == entries.end()) return 0;
      at = entry->second;
    }
    return at;
  }
  std::pair<Number, std::string> parentOf(const std::string& path) const {
    const auto slash = path.rfind('/');
    if (slash == std::string::npos) return {0, path};
    return {find(path.substr(0, slash)), path.substr(slash + 1)};
  }
  FileStatus statusOfInode(Number number) const {
    const Inode& inode = inodes_.at(number);
    FileStatus status;
    status.type = inode.isFolder ? FileStatus::Type::folder : FileStatus::Type::file;
    status.size = inode.bytes().size();
    status.device = 1;
    status.inode = number;
    status.links = linksTo(number);
    status.mode = inode.mode;
    status.owner = 1000;
    status.modified = inode.modified;
    return status;
  }
  std::uint64_t linksTo(Number number) const {
    std::uint64_t links = 0;
    for (const auto& [folder, inode] : inodes_) {
      for (const auto& [name, to] : inode.entries()) links += to == number ? 1 : 0;
    }
    return links;
  }
  std::error_code change(const std::string& path, Change change) {
    const Number parent = parentOf(path).first;
    if (parent == 0) return missing();
    observer_();
    inodes_.at(parent).changes.push_back(std::move(change));
    return {};
  }
  std::error_code make(const std::string& path, std::uint32_t mode, bool isFolder) {
    if (find(path) != 0) return std::make_error_code(std::errc::file_exists);
    const Number number = lastInode_ + 1;
    if (const auto error = change(path, {parentOf(path).second, number, {}})) return error;
    lastInode_ = number;
    inodes_[number] = {isFolder, mode, ++time_, {}, {}, {}, {}};
    return {};
  }
  Handle open(Number inode) {
    open_[++lastHandle_] = {inode};
    return lastHandle_;
  }

  std::size_t writeBytes_;
  std::map<Number, Inode> inodes_;
  std::map<Handle, Open> open_;
  Number lastInode_ = 1;
  Handle lastHandle_ = 100;
  std::int64_t time_ = 0;
  std::function<void()> observer_ = [] {};
};

}  // namespace fexora::test
