#include "bench/watch/Writer.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <ctime>

#include <fcntl.h>
#include <stdio.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fexora::bench {
namespace {

void writeFile(const std::string& path, const std::string& bytes) {
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  if (write(file, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) std::abort();
  close(file);
}

}  // namespace

std::int64_t now() {
  timespec time{};
  clock_gettime(CLOCK_MONOTONIC, &time);
  return time.tv_sec * std::int64_t{1'000'000'000} + time.tv_nsec;
}

Writer::Writer(const std::string& path, const std::string& one, const std::string& other) {
  void* const memory =
      mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  std::array<int, 2> pipe{};
  if (memory == MAP_FAILED || pipe2(pipe.data(), O_CLOEXEC) != 0) std::abort();
  shared_ = new (memory) Shared{};
  child_ = fork();
  if (child_ != 0) {
    close(pipe[0]);
    order_ = pipe[1];
    return;
  }
  close(pipe[1]);
  const std::string aside = path.substr(0, path.rfind('/')) + "-aside";
  mkdir(aside.c_str(), 0700);
  const std::string temporary = aside + "/new";
  bool turn = false;
  for (char order = 0; read(pipe[0], &order, 1) == 1;) {
    writeFile(temporary, (turn = !turn) ? one : other);
    shared_->renamedAt.store(now());
    rename(temporary.c_str(), path.c_str());
  }
  _exit(0);
}

Writer::~Writer() {
  close(order_);
  // Writers that were made later hold the pipe's other end as well, so that its closing says
  // nothing.
  kill(child_, SIGKILL);
  waitpid(child_, nullptr, 0);
  munmap(shared_, sizeof(Shared));
}

void Writer::replace() {
  if (write(order_, "!", 1) != 1) std::abort();
}

std::int64_t Writer::renamedAt() const {
  return shared_->renamedAt.load();
}

}  // namespace fexora::bench
