// A file seam that hands everything to another one: a test overrides what it wants to be different.
#pragma once

#include <string>
#include <vector>

#include "fexora/platform/files/Files.h"

namespace fexora::test {

class ForwardingFiles : public Files {
 public:
  explicit ForwardingFiles(Files& below) : below_(below) {}

  FileResult<Handle> openForReading(const std::string& path) override {
    return below_.openForReading(path);
  }
  FileResult<Handle> openFolder(const std::string& path) override {
    return below_.openFolder(path);
  }
  FileResult<Handle> createExclusive(const std::string& path, std::uint32_t mode) override {
    return below_.createExclusive(path, mode);
  }
  std::error_code close(Handle handle) override { return below_.close(handle); }
  FileResult<std::size_t> read(Handle handle, std::span<char> buffer) override {
    return below_.read(handle, buffer);
  }
  FileResult<std::size_t> write(Handle handle, std::string_view bytes) override {
    return below_.write(handle, bytes);
  }
  std::error_code flush(Handle handle) override { return below_.flush(handle); }
  std::error_code lock(Handle handle) override { return below_.lock(handle); }
  FileResult<FileStatus> status(Handle handle) override { return below_.status(handle); }
  std::error_code changeOwner(Handle handle, std::uint32_t owner, std::uint32_t group) override {
    return below_.changeOwner(handle, owner, group);
  }
  FileResult<FileStatus> statusOf(const std::string& path) override {
    return below_.statusOf(path);
  }
  std::error_code rename(const std::string& from, const std::string& to) override {
    return below_.rename(from, to);
  }
  std::error_code link(const std::string& from, const std::string& to) override {
    return below_.link(from, to);
  }
  std::error_code remove(const std::string& path) override { return below_.remove(path); }
  std::error_code makeFolder(const std::string& path, std::uint32_t mode) override {
    return below_.makeFolder(path, mode);
  }
  FileResult<std::vector<std::string>> list(const std::string& folder) override {
    return below_.list(folder);
  }
  std::error_code mayChange(const std::string& folder) override { return below_.mayChange(folder); }
  std::uint32_t user() override { return below_.user(); }

 protected:
  Files& below() { return below_; }

 private:
  Files& below_;
};

}  // namespace fexora::test
