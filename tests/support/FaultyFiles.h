// Another file seam's operations with faults among them, and a record of what was called.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "fexora/platform/files/Files.h"

namespace fexora::test {

class FaultyFiles final : public Files {
 public:
  enum class Operation : std::uint8_t {
    openForReading,
    openFolder,
    createExclusive,
    close,
    read,
    write,
    flush,
    lock,
    status,
    changeOwner,
    statusOf,
    rename,
    link,
    remove,
    makeFolder,
    list
  };
  struct Call {
    Operation operation;
    std::string path;  // the first one; of the handle, for operations on handles
    bool failed;       // by our hand
  };

  explicit FaultyFiles(Files& below) : below_(below) {}

  // Makes the call with this number (the next one is 0) fail with a POSIX error number, and with
  // `fromThenOn` all later ones. Forgets the record. A failing close closes all the same, as the
  // system's does.
  void failCall(std::size_t number, int error, bool fromThenOn);
  // The same for each call of one operation.
  void failAll(Operation operation, int error);
  void heal();

  const std::vector<Call>& calls() const { return calls_; }
  std::size_t count(Operation operation) const;
  std::size_t openHandles() const { return handles_.size(); }

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
  std::error_code mayChange(const std::string& folder) override { return below_.mayChange(folder); }
  std::uint32_t user() override { return below_.user(); }

 private:
  std::error_code enter(Operation operation, const std::string& path);
  FileResult<Handle> keep(FileResult<Handle> handle, const std::string& path);

  Files& below_;
  std::vector<Call> calls_;
  std::map<Handle, std::string> handles_;
  std::size_t first_ = 0;
  int error_ = 0;  // none when 0
  bool fromThenOn_ = false;
  std::map<Operation, int> always_;
};

const char* nameOf(FaultyFiles::Operation operation);

}  // namespace fexora::test
