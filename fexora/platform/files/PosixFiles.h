// The file seam on this system's own calls.
#pragma once

#include "fexora/platform/files/Files.h"

namespace fexora {

class FEXORA_API PosixFiles : public Files {
 public:
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
  std::error_code mayChange(const std::string& folder) override;
  std::uint32_t user() override;
};

}  // namespace fexora
