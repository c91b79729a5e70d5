#include "fexora/platform/network/curl/AnswerCache.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <utility>
#include <vector>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/files/AtomicWriter.h"
#include "fexora/platform/files/PrivateFolder.h"
#include "fexora/platform/files/ReadFile.h"

namespace fexora {
namespace {

constexpr std::uint32_t kFileMode = 0600;
constexpr std::string_view kSuffix = ".answer";
constexpr std::uint32_t kOthersWrite = 0022;
constexpr std::size_t kValidatorBytes = 1024;
// Container, address and validators are shorter than this together.
constexpr std::size_t kHeadBytes = std::size_t{64} << 10;

// A file: this line, then five fields, each as its length, a space, its bytes and a line end, then
// the check sum of all that as sixteen hexadecimal digits.
constexpr std::string_view kFirstLine = "fexora answer 1\n";

// FNV-1a: against torn and edited files, not against somebody who computes it anew.
std::uint64_t checkSum(std::string_view bytes) noexcept {
  std::uint64_t hash = 0xcbf29ce484222325;
  for (const char byte : bytes) {
    hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001b3;
  }
  return hash;
}

std::string hexText(std::uint64_t number) {
  std::string text(16, '0');
  for (auto digit = text.rbegin(); digit != text.rend(); ++digit, number >>= 4U) {
    *digit = "0123456789abcdef"[number & 15U];
  }
  return text;
}

void appendField(std::string& out, std::string_view field) {
  out.append(std::to_string(field.size())).append(" ").append(field).append("\n");
}

// The field at the head of `text`, which is shortened by it.
std::optional<std::string_view> takeField(std::string_view& text) {
  std::size_t length = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), length);
  if (error != std::errc()) return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  if (text.size() < 2 || text.front() != ' ' || length > text.size() - 2) return std::nullopt;
  const std::string_view field = text.substr(1, length);
  if (text[length + 1] != '\n') return std::nullopt;
  text.remove_prefix(length + 2);
  return field;
}

std::string encode(std::string_view container, std::string_view address,
                   const StoredAnswer& answer) {
  std::string bytes(kFirstLine);
  bytes.reserve(answer.body.size() + kHeadBytes);
  appendField(bytes, container);
  appendField(bytes, address);
  appendField(bytes, answer.etag);
  appendField(bytes, answer.lastModified);
  appendField(bytes, answer.body);
  bytes.append(hexText(checkSum(bytes)));
  return bytes;
}

std::optional<StoredAnswer> decode(std::string_view bytes, std::string_view container,
                                   std::string_view address) {
  constexpr std::size_t kSumBytes = 16;
  if (!bytes.starts_with(kFirstLine) || bytes.size() < kSumBytes) return std::nullopt;
  std::string_view rest = bytes.substr(0, bytes.size() - kSumBytes);
  if (hexText(checkSum(rest)) != bytes.substr(rest.size())) return std::nullopt;
  rest.remove_prefix(kFirstLine.size());
  std::array<std::string_view, 5> fields;
  for (auto& field : fields) {
    const auto taken = takeField(rest);
    if (!taken) return std::nullopt;
    field = *taken;
  }
  if (!rest.empty() || fields[0] != container || fields[1] != address) return std::nullopt;
  if (!isHeaderText(fields[2]) || !isHeaderText(fields[3])) return std::nullopt;
  return StoredAnswer{std::string(fields[2]), std::string(fields[3]), std::string(fields[4])};
}

}  // namespace

AnswerCache::AnswerCache(Files& files, std::string folder, std::string container,
                         std::size_t bodyLimit)
    : files_(files),
      folder_(std::move(folder)),
      container_(std::move(container)),
      bodyLimit_(bodyLimit) {}

std::optional<StoredAnswer> AnswerCache::load(const std::string& address) {
  if (folder_.empty() || !folderIsOurs()) return std::nullopt;
  const auto whole = readWholeFile(files_, pathFor(address), bodyLimit_ + kHeadBytes);
  if (!whole.ok() || whole->status.owner != files_.user()) return std::nullopt;
  auto answer = decode(whole->bytes, container_, address);
  if (!answer || answer->body.size() > bodyLimit_ || !answer->hasValidator()) return std::nullopt;
  return answer;
}

bool AnswerCache::save(const std::string& address, const StoredAnswer& answer) {
  if (folder_.empty()) return true;
  if (container_.size() + address.size() + 2 * kValidatorBytes > kHeadBytes / 2) return false;
  makePrivateFolder(files_, folder_);
  if (!folderIsOurs()) return false;
  removeDeadTemporaries(files_, folder_);
  const std::string path = pathFor(address);
  const auto outcome = replaceFile(files_, path, encode(container_, address, answer), kFileMode);
  if (outcome.error) return false;
  removeOldest(path);
  return true;
}

// The one that was just kept stays, whatever the clock says.
void AnswerCache::removeOldest(const std::string& kept) {
  const auto names = files_.list(folder_);
  if (!names.ok()) return;
  std::vector<std::pair<std::int64_t, std::string>> others;
  for (const std::string& name : *names) {
    std::string path = folder_ + "/" + name;
    if (!name.ends_with(kSuffix) || path == kept) continue;
    const auto status = files_.statusOf(path);
    if (status.ok()) others.emplace_back(status->modified, std::move(path));
  }
  std::sort(others.begin(), others.end());
  for (std::size_t i = 0; i + limits::kKeptAnswers < others.size() + 1; ++i) {
    files_.remove(others[i].second);
  }
}

// In a folder that others may write, a kept answer could be anybody's.
bool AnswerCache::folderIsOurs() {
  const auto status = files_.statusOf(folder_);
  return status.ok() && status->type == FileStatus::Type::folder &&
         status->owner == files_.user() && (status->mode & kOthersWrite) == 0;
}

std::string AnswerCache::pathFor(const std::string& address) const {
  std::string key = container_;
  key.append(1, '\0').append(address);
  return folder_ + "/" + hexText(checkSum(key)).append(kSuffix);
}

bool isHeaderText(std::string_view text) noexcept {
  return text.size() <= kValidatorBytes &&
         std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

}  // namespace fexora
