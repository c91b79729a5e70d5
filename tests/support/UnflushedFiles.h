// Real files without waiting for the disk, for tests that save thousands of times.
#pragma once

#include "tests/support/ForwardingFiles.h"

namespace fexora::test {

class UnflushedFiles : public ForwardingFiles {
 public:
  UnflushedFiles() : ForwardingFiles(Files::process()) {}
  std::error_code flush(Handle /*handle*/) override { return {}; }
};

}  // namespace fexora::test
