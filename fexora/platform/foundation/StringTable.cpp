#include "fexora/platform/foundation/StringTable.h"

#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

#include "fexora/platform/foundation/Limits.h"

namespace fexora {
namespace {

struct CloseFile {
  void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};

std::string reason(const std::string& path, int number) {
  return path + ": " + std::generic_category().message(number);
}

}  // namespace

std::optional<std::string> TableStrings::string(std::string_view key) {
  std::shared_ptr<const StringTable> table;
  {
    const std::lock_guard lock(mutex_);
    table = table_;
  }
  const auto found = table->find(key);
  return found != table->end() ? std::optional(found->second) : std::nullopt;
}

std::uint64_t TableStrings::generation() {
  const std::lock_guard lock(mutex_);
  return generation_;
}

void TableStrings::setTable(StringTable table) {
  auto shared = std::make_shared<const StringTable>(std::move(table));
  const std::lock_guard lock(mutex_);
  table_.swap(shared);
  generation_ = newGeneration();
}

std::optional<std::string> readStringsBytes(const std::string& path, std::string& error) {
  errno = 0;
  const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "rbe"));
  if (file == nullptr) {
    error = reason(path, errno);
    return std::nullopt;
  }
  std::string bytes;
  char block[16384];
  while (const std::size_t count = std::fread(block, 1, sizeof(block), file.get())) {
    bytes.append(block, count);
    if (bytes.size() > limits::kStringsFileBytes) {
      error = path + ": more than 16 MiB";
      return std::nullopt;
    }
  }
  if (std::ferror(file.get()) != 0) {
    error = reason(path, errno);
    return std::nullopt;
  }
  return bytes;
}

}  // namespace fexora
