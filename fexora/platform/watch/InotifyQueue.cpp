#include "fexora/platform/watch/InotifyQueue.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>

#include <sys/inotify.h>
#include <unistd.h>

#include "fexora/platform/base/Limits.h"

namespace fexora {
namespace {

// Room for hundreds of events; one needs at most 16 bytes and a name of 256.
constexpr std::size_t kBufferBytes = std::size_t{16} << 10;
constexpr int kReads = 512;

void handOver(const char* bytes, std::size_t size,
              const std::function<void(const InotifyQueue::Event&)>& take) {
  for (std::size_t at = 0; at + sizeof(inotify_event) <= size;) {
    inotify_event event{};
    std::memcpy(&event, bytes + at, sizeof event);
    // The name is padded with any number of zeros.
    const char* const name = bytes + at + sizeof event;
    take({event.wd, event.mask, {name, ::strnlen(name, event.len)}});
    at += sizeof event + event.len;
  }
}

}  // namespace

InotifyQueue::InotifyQueue() noexcept : descriptor_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
  if (descriptor_ < 0) error_ = {errno, std::generic_category()};
}

InotifyQueue::~InotifyQueue() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

int InotifyQueue::add(const std::string& path, std::uint32_t mask,
                      std::error_code& error) noexcept {
  const int watch = ::inotify_add_watch(descriptor_, path.c_str(), mask | IN_ONLYDIR | IN_MASK_ADD);
  if (watch < 0) error = {errno, std::generic_category()};
  return watch;
}

std::error_code InotifyQueue::drain(const std::function<void(const Event&)>& take) {
  std::array<char, kBufferBytes> buffer;
  // More than a full queue gives; another process that never rests must not hold us here.
  int interrupted = 0;
  for (int reads = 0; reads < kReads; ++reads) {
    const ssize_t size = ::read(descriptor_, buffer.data(), buffer.size());
    if (size < 0 && errno == EINTR && ++interrupted <= limits::kInterruptedRetries) continue;
    if (size < 0 && errno != EAGAIN) return {errno, std::generic_category()};
    if (size <= 0) break;
    handOver(buffer.data(), static_cast<std::size_t>(size), take);
  }
  return {};
}

}  // namespace fexora
