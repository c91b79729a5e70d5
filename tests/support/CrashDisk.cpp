#include "tests/support/CrashDisk.h"

#include <algorithm>
#include <utility>

namespace fexora::test {
namespace {

constexpr std::uint64_t kRoot = 1;

void apply(std::string& bytes, std::size_t at, std::string_view part) {
  if (bytes.size() < at + part.size()) bytes.resize(at + part.size(), '\0');
  bytes.replace(at, part.size(), part);
}

std::error_code code(std::errc error) {
  return std::make_error_code(error);
}

}  // namespace

std::string CrashDisk::Inode::bytes() const {
  std::string all = flushed;
  for (const Write& write : writes) apply(all, write.at, write.bytes);
  return all;
}

std::map<std::string, CrashDisk::Number> CrashDisk::Inode::entries() const {
  auto all = names;
  for (const Change& change : changes) {
    all.erase(change.gone);
    all.erase(change.name);
    if (change.to != 0) all[change.name] = change.to;
  }
  return all;
}

CrashDisk::CrashDisk(std::size_t writeBytes) : writeBytes_(writeBytes) {
  inodes_[kRoot].isFolder = true;
  inodes_[kRoot].mode = 0755;
}

CrashDisk::~CrashDisk() = default;

// What the part number `pick` of all ways in which this may come out leaves; `pick` is divided by
// their count.
CrashDisk::Inode CrashDisk::Inode::settled(std::size_t& pick) const {
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

void CrashDisk::powerCuts(const std::function<void(CrashDisk&)>& judge) const {
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

std::unique_ptr<CrashDisk> CrashDisk::restarted() const {
  auto copy = std::make_unique<CrashDisk>(writeBytes_);
  copy->inodes_ = inodes_;
  copy->lastInode_ = lastInode_;
  copy->time_ = time_;
  return copy;
}

std::pair<CrashDisk::Number, std::string> CrashDisk::parentOf(const std::string& path) const {
  const auto slash = path.rfind('/');
  if (slash == std::string::npos) return {0, path};
  return {find(path.substr(0, slash)), path.substr(slash + 1)};
}

CrashDisk::Number CrashDisk::find(const std::string& path) const {
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

std::optional<std::string> CrashDisk::content(const std::string& path) const {
  const Number number = find(path);
  if (number == 0 || inodes_.at(number).isFolder) return std::nullopt;
  return inodes_.at(number).bytes();
}

void CrashDisk::put(const std::string& path, std::string bytes) {
  const auto [parent, name] = parentOf(path);
  const Number number = ++lastInode_;
  inodes_[number] = {false, 0600, ++time_, std::move(bytes), {}, {}, {}};
  inodes_.at(parent).names[name] = number;
}

std::uint64_t CrashDisk::linksTo(Number number) const {
  std::uint64_t links = 0;
  for (const auto& [folder, inode] : inodes_) {
    for (const auto& [name, to] : inode.entries()) links += to == number ? 1 : 0;
  }
  return links;
}

FileStatus CrashDisk::statusOfInode(Number number) const {
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

Files::Handle CrashDisk::open(Number inode) {
  open_[++lastHandle_] = {inode};
  return lastHandle_;
}

FileResult<Files::Handle> CrashDisk::openForReading(const std::string& path) {
  const Number number = find(path);
  if (number == 0) return code(std::errc::no_such_file_or_directory);
  return open(number);
}

FileResult<Files::Handle> CrashDisk::openFolder(const std::string& path) {
  const Number number = find(path);
  if (number == 0) return code(std::errc::no_such_file_or_directory);
  if (!inodes_.at(number).isFolder) return code(std::errc::not_a_directory);
  return open(number);
}

std::error_code CrashDisk::change(const std::string& path, Change change) {
  const Number parent = parentOf(path).first;
  if (parent == 0) return code(std::errc::no_such_file_or_directory);
  observer_();
  inodes_.at(parent).changes.push_back(std::move(change));
  return {};
}

std::error_code CrashDisk::make(const std::string& path, std::uint32_t mode, bool isFolder) {
  if (find(path) != 0) return code(std::errc::file_exists);
  const Number number = lastInode_ + 1;
  if (const auto error = change(path, {parentOf(path).second, number, {}})) return error;
  lastInode_ = number;
  inodes_[number] = {isFolder, mode, ++time_, {}, {}, {}, {}};
  return {};
}

FileResult<Files::Handle> CrashDisk::createExclusive(const std::string& path, std::uint32_t mode) {
  if (const auto error = make(path, mode, false)) return error;
  return open(lastInode_);
}

std::error_code CrashDisk::makeFolder(const std::string& path, std::uint32_t mode) {
  return make(path, mode, true);
}

std::error_code CrashDisk::close(Handle handle) {
  return open_.erase(handle) == 1 ? std::error_code() : code(std::errc::bad_file_descriptor);
}

FileResult<std::size_t> CrashDisk::read(Handle handle, std::span<char> buffer) {
  Open& open = open_.at(handle);
  const std::string bytes = inodes_.at(open.inode).bytes();
  const std::size_t count = std::min(buffer.size(), bytes.size() - open.at);
  std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(open.at), count, buffer.begin());
  open.at += count;
  return count;
}

FileResult<std::size_t> CrashDisk::write(Handle handle, std::string_view bytes) {
  observer_();
  Open& open = open_.at(handle);
  const std::string_view part = bytes.substr(0, writeBytes_);
  Inode& inode = inodes_.at(open.inode);
  inode.writes.push_back({open.at, std::string(part)});
  inode.modified = ++time_;
  open.at += part.size();
  return part.size();
}

std::error_code CrashDisk::flush(Handle handle) {
  observer_();
  Inode& inode = inodes_.at(open_.at(handle).inode);
  inode.flushed = inode.bytes();
  inode.writes.clear();
  inode.names = inode.entries();
  inode.changes.clear();
  return {};
}

std::error_code CrashDisk::lock(Handle handle) {
  Open& mine = open_.at(handle);
  for (const auto& [other, open] : open_) {
    if (other != handle && open.inode == mine.inode && open.locks) {
      return code(std::errc::resource_unavailable_try_again);
    }
  }
  mine.locks = true;
  return {};
}

FileResult<FileStatus> CrashDisk::status(Handle handle) {
  return statusOfInode(open_.at(handle).inode);
}

std::error_code CrashDisk::changeOwner(Handle /*handle*/, std::uint32_t /*owner*/,
                                       std::uint32_t /*group*/) {
  return {};
}

FileResult<FileStatus> CrashDisk::statusOf(const std::string& path) {
  const Number number = find(path);
  if (number == 0) return code(std::errc::no_such_file_or_directory);
  return statusOfInode(number);
}

std::error_code CrashDisk::rename(const std::string& from, const std::string& to) {
  const Number number = find(from);
  if (number == 0) return code(std::errc::no_such_file_or_directory);
  return change(to, {parentOf(to).second, number, parentOf(from).second});
}

std::error_code CrashDisk::link(const std::string& from, const std::string& to) {
  const Number number = find(from);
  if (number == 0) return code(std::errc::no_such_file_or_directory);
  if (find(to) != 0) return code(std::errc::file_exists);
  return change(to, {parentOf(to).second, number, {}});
}

std::error_code CrashDisk::remove(const std::string& path) {
  if (find(path) == 0) return code(std::errc::no_such_file_or_directory);
  return change(path, {parentOf(path).second, 0, {}});
}

FileResult<std::vector<std::string>> CrashDisk::list(const std::string& folder) {
  const Number number = find(folder);
  if (number == 0) return code(std::errc::no_such_file_or_directory);
  std::vector<std::string> names;
  for (const auto& [name, to] : inodes_.at(number).entries()) names.push_back(name);
  return names;
}

}  // namespace fexora::test
