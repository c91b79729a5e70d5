#include "fexora/history/sqlite/HistoryPlace.h"

#include <algorithm>
#include <filesystem>
#include <utility>
#include <vector>

#include "fexora/history/HistoryFile.h"
#include "fexora/platform/base/Limits.h"
#include "fexora/platform/files/PrivateFolder.h"
#include "fexora/platform/text/NumberText.h"

namespace fexora {
namespace {

constexpr std::uint32_t kHistoryMode = 0600;
constexpr std::string_view kJournal = "-journal";
// A name that ended in "-journal" or "-wal" SQLite would take for another file's.
constexpr std::string_view kDamagedPrefix = "damaged-";
constexpr std::string_view kDamagedSuffix = ".sqlite";

SqliteFault::Kind kindOf(const std::error_code& error) {
  if (error == std::errc::no_space_on_device) return SqliteFault::Kind::full;
  if (error == std::errc::permission_denied || error == std::errc::read_only_file_system ||
      error == std::errc::operation_not_permitted) {
    return SqliteFault::Kind::readOnly;
  }
  return SqliteFault::Kind::other;
}

void must(const std::error_code& error) {
  if (error) throw SqliteFault{kindOf(error), error.message()};
}

// The number in "damaged-3.sqlite".
std::optional<std::int64_t> asideNumber(std::string_view name) {
  if (!name.starts_with(kDamagedPrefix) || !name.ends_with(kDamagedSuffix)) return std::nullopt;
  name.remove_prefix(kDamagedPrefix.size());
  name.remove_suffix(kDamagedSuffix.size());
  return parseInteger(name);
}

std::string asideName(std::int64_t number) {
  return std::string(kDamagedPrefix) + integerText(number) + std::string(kDamagedSuffix);
}

class OpenFolder {
 public:
  OpenFolder(Files& files, const std::string& path) : files_(files) {
    const auto opened = files.openFolder(path);
    must(opened.error());
    handle_ = *opened;
  }
  OpenFolder(const OpenFolder&) = delete;
  OpenFolder& operator=(const OpenFolder&) = delete;
  ~OpenFolder() { files_.close(handle_); }

  // Until the folder is closed, against the others that would put a file of it aside.
  void lock() {
    if (files_.lock(handle_)) {
      throw SqliteFault{SqliteFault::Kind::busy, "another process puts it right"};
    }
  }
  void flush() { must(files_.flush(handle_)); }

 private:
  Files& files_;
  Files::Handle handle_ = -1;
};

}  // namespace

HistoryPlace::HistoryPlace(std::string folder, Files& files)
    : folder_(std::move(folder)), files_(files) {}

std::string HistoryPlace::pathOf(std::string_view name) const {
  return folder_ + "/" + std::string(name);
}

bool HistoryPlace::hasContent() {
  const auto status = files_.statusOf(pathOf(kHistoryFile));
  if (!status.ok()) {
    if (status.error() == std::errc::no_such_file_or_directory) return false;
    must(status.error());
  }
  if (status->type != FileStatus::Type::file) {
    throw SqliteFault{SqliteFault::Kind::other, "it is no regular file"};
  }
  return status->size > 0;
}

bool HistoryPlace::mayWrite() {
  return !files_.mayChange(folder_);
}

bool HistoryPlace::isWritable() {
  constexpr std::uint32_t kOwnerWrites = 0200;
  const auto status = files_.statusOf(pathOf(kHistoryFile));
  return status.ok() && status->owner == files_.user() && (status->mode & kOwnerWrites) != 0;
}

void HistoryPlace::make() {
  const auto made = makePrivateFolder(files_, folder_);
  if (made != std::errc::file_exists) must(made);
  must(files_.mayChange(folder_));
  const auto file = files_.createExclusive(pathOf(kHistoryFile), kHistoryMode);
  if (!file.ok() && file.error() == std::errc::file_exists) return;
  must(file.error());
  const auto flushed = files_.flush(*file);
  must(files_.close(*file));
  must(flushed);
  OpenFolder(files_, folder_).flush();
}

std::string HistoryPlace::realPath(std::string_view name) const {
  std::error_code error;
  const auto folder = std::filesystem::canonical(folder_, error);
  must(error);
  return (folder / name).string();
}

std::uint64_t HistoryPlace::bytes() {
  const auto status = files_.statusOf(pathOf(kHistoryFile));
  return status.ok() ? status->size : 0;
}

std::optional<std::string> HistoryPlace::putAside(Database& database) {
  database.rollBack();
  try {
    database.run("BEGIN IMMEDIATE");
  } catch (const SqliteFault& fault) {
    // So damaged that nobody can lock it: then nobody can write it, either.
    const bool isLockable =
        fault.kind != SqliteFault::Kind::damaged && fault.kind != SqliteFault::Kind::readOnly;
    if (isLockable) throw;
  }
  OpenFolder folder(files_, folder_);
  folder.lock();
  if (database.isMoved()) return std::nullopt;
  const std::string name = nextName();
  moveAside(name);
  folder.flush();
  return name;
}

std::string HistoryPlace::nextName() {
  const auto names = files_.list(folder_);
  must(names.error());
  std::vector<std::int64_t> numbers;
  for (const std::string& name : *names) {
    if (const auto number = asideNumber(name)) numbers.push_back(*number);
  }
  std::sort(numbers.begin(), numbers.end());
  const auto most = static_cast<std::size_t>(limits::kDamagedHistories);
  for (std::size_t i = 0; i + most <= numbers.size(); ++i) {
    const std::string old = pathOf(asideName(numbers[i]));
    files_.remove(old + std::string(kJournal));
    files_.remove(old);
  }
  return asideName(numbers.empty() ? 1 : numbers.back() + 1);
}

void HistoryPlace::moveAside(const std::string& name) {
  const std::string file = pathOf(kHistoryFile);
  const std::string aside = pathOf(name);
  const std::string journal(kJournal);
  // First the journal: left beside a new file it would be played into that one.
  const auto moved = files_.rename(file + journal, aside + journal);
  if (moved != std::errc::no_such_file_or_directory) must(moved);
  must(files_.rename(file, aside));
}

}  // namespace fexora
