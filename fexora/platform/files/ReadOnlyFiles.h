// A file system in which nothing can be changed, so that a store that is only asked is never made
// or written: every attempt fails with read_only_file_system.
#pragma once

#include <string>
#include <system_error>

#include "fexora/platform/files/PosixFiles.h"

namespace fexora {

class ReadOnlyFiles final : public PosixFiles {
 public:
  FileResult<Handle> createExclusive(const std::string& /*path*/, std::uint32_t /*mode*/) override {
    return refusal();
  }
  std::error_code rename(const std::string& /*from*/, const std::string& /*to*/) override {
    return refusal();
  }
  std::error_code link(const std::string& /*from*/, const std::string& /*to*/) override {
    return refusal();
  }
  std::error_code remove(const std::string& /*path*/) override { return refusal(); }
  std::error_code makeFolder(const std::string& /*path*/, std::uint32_t /*mode*/) override {
    return refusal();
  }
  std::error_code mayChange(const std::string& /*folder*/) override { return refusal(); }

 private:
  static std::error_code refusal() {
    return std::make_error_code(std::errc::read_only_file_system);
  }
};

}  // namespace fexora
