#include "c/Forks.h"

#include <atomic>

#include <pthread.h>

namespace fexora::c {
namespace {

std::atomic<std::uint64_t> generation = 1;

const int registered =
    pthread_atfork(nullptr, nullptr, [] { generation.fetch_add(1, std::memory_order_relaxed); });

}  // namespace

std::uint64_t processGeneration() noexcept {
  return generation.load(std::memory_order_relaxed);
}

}  // namespace fexora::c
