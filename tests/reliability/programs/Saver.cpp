// A process for the crash tests. The container is what the environment says.
//
//   reliability_saver save COUNT [--without file-flush|folder-flush]
//       saves the number 1, then 2, … as "Fraction", up to COUNT, with 64 KiB beside it, and tells
//       each save's number on standard output once "SAVE SUCCESS" was said; COUNT 0: without end
//   reliability_saver load
//       starts, and prints what was read: "Fraction N" or "nothing: REASON"
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include <unistd.h>

#include "fexora/fexora.h"
#include "fexora/platform/files/PosixFiles.h"

namespace {

using namespace fexora;

// What a save is worth without one of its flushes: the control of the crash tests.
class Unflushed final : public PosixFiles {
 public:
  explicit Unflushed(std::string_view without) : isFile_(without == "file-flush") {}
  std::error_code flush(Handle handle) override {
    const auto found = status(handle);
    const bool isFile = found.ok() && found->type == FileStatus::Type::file;
    return isFile == isFile_ ? std::error_code() : PosixFiles::flush(handle);
  }

 private:
  bool isFile_;
};

void tell(long number) {
  const std::string line = std::to_string(number) + "\n";
  // In one piece, so that the reader never sees half a number.
  if (::write(STDOUT_FILENO, line.data(), line.size()) < 0) std::exit(1);
}

int save(long count) {
  StoreManager& store = storeManager();
  Dictionary content = store.ud();
  content.set("ballast", Value(std::string(std::size_t{64} << 10, 'x')));
  store.setUd(content);
  for (long number = 1; count == 0 || number <= count; ++number) {
    store.setFraction(number);
    if (!store.saveProblem().empty()) return 1;
    tell(number);
  }
  return 0;
}

int load() {
  StoreManager& store = storeManager();
  if (!store.loadProblem().empty()) {
    std::printf("nothing: %s\n", store.loadProblem().c_str());
  } else {
    std::printf("Fraction %lld\n", static_cast<long long>(store.fraction()));
  }
  return 0;
}

}  // namespace

int main(int count, char** words) {
  const std::string_view job = count > 1 ? words[1] : "";
  if (count == 5 && std::strcmp(words[3], "--without") == 0) {
    Platform::process().files = new Unflushed(words[4]);
  }
  if (job == "load") return load();
  if (job == "save" && count > 2) return save(std::strtol(words[2], nullptr, 10));
  std::fputs("reliability_saver: save COUNT [--without FLUSH], or load\n", stderr);
  return 2;
}
