// Real files without waiting for the disk, for tests that save thousands of times.
#pragma once

#include "fexora/platform/base/NoDestructor.h"
#include "fexora/platform/files/PosixFiles.h"

namespace fexora::test {

class UnflushedFiles : public PosixFiles {
 public:
  std::error_code flush(Handle /*handle*/) override { return {}; }
};

inline Files& unflushedFiles() {
  static NoDestructor<UnflushedFiles> files;
  return *files;
}

}  // namespace fexora::test
