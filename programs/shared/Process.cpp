#include "programs/shared/Process.h"

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace fexora::program {

void prepareProcess() {
  std::signal(SIGXFSZ, SIG_IGN);
  for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
    const bool isClosed = ::fcntl(descriptor, F_GETFD) == -1 && errno == EBADF;
    // The lowest free number is this one.
    if (isClosed) static_cast<void>(::open("/", O_PATH));
  }
}

}  // namespace fexora::program
