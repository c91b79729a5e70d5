// Another file seam's operations with faults among them, and a record of what was called.
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fexora/platform/files/Files.h"

namespace fexora::test {

class FaultyFiles final : public Files {
 public:
  struct Call {
    std::string_view operation;
    std::string path;
    bool failed;  // by our hand
  };

  explicit FaultyFiles(Files& below) : below_(below) {}

  // Makes each call for which `fails`, given its number from now on, fail with a POSIX error
  // number. Forgets the record.
  void fail(int error, std::function<bool(std::size_t number, const Call& call)> fails) {
    calls_.clear();
    error_ = {error, std::generic_category()};
    fails_ = std::move(fails);
  }
  // The call with this number, and with `fromThenOn` all later ones.
  void failCall(std::size_t number, int error, bool fromThenOn) {
    fail(error, [=](std::size_t now, const Call& /*call*/) {
      return now == number || (fromThenOn && now > number);
    });
  }
  void heal() { fail(0, nullptr); }

  const std::vector<Call>& calls() const { return calls_; }
  // Whether one of these calls was made, and went as `failed` says.
  bool hasCall(std::string_view operation, bool failed) const {
    return std::any_of(calls_.begin(), calls_.end(), [&](const Call& call) {
      return call.operation == operation && call.failed == failed;
    });
  }

  std::size_t openHandles() const { return paths_.size(); }

  FileResult<Handle> openForReading(const std::string& path) override {
    return keep(path, run("openForReading", path, [&] { return below_.openForReading(path); }));
  }
  FileResult<Handle> openFolder(const std::string& path) override {
    return keep(path, run("openFolder", path, [&] { return below_.openFolder(path); }));
  }
  FileResult<Handle> createExclusive(const std::string& path, std::uint32_t mode) override {
    return keep(path,
                run("createExclusive", path, [&] { return below_.createExclusive(path, mode); }));
  }
  // Closes in any case, as the system does.
  std::error_code close(Handle handle) override {
    const auto answer = enter("close", paths_[handle]);
    paths_.erase(handle);
    const auto real = below_.close(handle);
    return answer.value_or(real);
  }
  FileResult<std::size_t> read(Handle handle, std::span<char> buffer) override {
    return run("read", paths_[handle], [&] { return below_.read(handle, buffer); });
  }
  FileResult<std::size_t> write(Handle handle, std::string_view bytes) override {
    return run("write", paths_[handle], [&] { return below_.write(handle, bytes); });
  }
  std::error_code flush(Handle handle) override {
    return run("flush", paths_[handle], [&] { return below_.flush(handle); });
  }
  std::error_code lock(Handle handle) override {
    return run("lock", paths_[handle], [&] { return below_.lock(handle); });
  }
  FileResult<FileStatus> status(Handle handle) override {
    return run("status", paths_[handle], [&] { return below_.status(handle); });
  }
  std::error_code changeOwner(Handle handle, std::uint32_t owner, std::uint32_t group) override {
    return run("changeOwner", paths_[handle],
               [&] { return below_.changeOwner(handle, owner, group); });
  }
  FileResult<FileStatus> statusOf(const std::string& path) override {
    return run("statusOf", path, [&] { return below_.statusOf(path); });
  }
  std::error_code rename(const std::string& from, const std::string& to) override {
    return run("rename", from, [&] { return below_.rename(from, to); });
  }
  std::error_code link(const std::string& from, const std::string& to) override {
    return run("link", from, [&] { return below_.link(from, to); });
  }
  std::error_code remove(const std::string& path) override {
    return run("remove", path, [&] { return below_.remove(path); });
  }
  std::error_code makeFolder(const std::string& path, std::uint32_t mode) override {
    return run("makeFolder", path, [&] { return below_.makeFolder(path, mode); });
  }
  FileResult<std::vector<std::string>> list(const std::string& folder) override {
    return run("list", folder, [&] { return below_.list(folder); });
  }
  std::error_code mayChange(const std::string& folder) override { return below_.mayChange(folder); }
  std::uint32_t user() override { return below_.user(); }

 private:
  // The answer that takes the call's place; nothing to let it pass.
  std::optional<std::error_code> enter(std::string_view operation, const std::string& path) {
    calls_.push_back({operation, path, false});
    Call& call = calls_.back();
    call.failed = fails_ && fails_(calls_.size() - 1, call);
    return call.failed ? std::optional(error_) : std::nullopt;
  }
  template <class Call>
  auto run(std::string_view operation, const std::string& path, Call call) -> decltype(call()) {
    if (const auto answer = enter(operation, path)) return *answer;
    return call();
  }
  FileResult<Handle> keep(const std::string& path, FileResult<Handle> handle) {
    if (handle.ok()) paths_[*handle] = path;
    return handle;
  }

  Files& below_;
  std::map<Handle, std::string> paths_;
  std::vector<Call> calls_;
  std::error_code error_;
  std::function<bool(std::size_t, const Call&)> fails_;
};

}  // namespace fexora::test
