#include "fexora/platform/network/AnswerCache.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/files/AtomicWriter.h"
#include "fexora/platform/files/PrivateFolder.h"
#include "fexora/platform/files/ReadFile.h"
#include "fexora/platform/network/ShownAddress.h"
#include "fexora/platform/plist/PropertyListReader.h"
#include "fexora/platform/plist/PropertyListWriter.h"

namespace fexora {
namespace {

constexpr std::uint32_t kAnswerMode = 0600;
constexpr std::string_view kSuffix = ".answer";
constexpr std::uint32_t kWritableByOthers = 0022;
constexpr std::size_t kValidatorBytes = 1024;
// Container, address and validators are shorter than this together.
constexpr std::size_t kHeadBytes = std::size_t{64} << 10;

// FNV-1a: tells the addresses of one user apart, and says none.
std::string hashOf(std::string_view bytes) {
  std::uint64_t hash = 0xcbf29ce484222325;
  for (const char byte : bytes) {
    hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001b3;
  }
  std::string text(16, '0');
  for (auto digit = text.rbegin(); digit != text.rend(); ++digit, hash >>= 4U) {
    *digit = "0123456789abcdef"[hash & 15U];
  }
  return text;
}

// As data, since a path or an address may be no text.
Value dataOf(std::string_view bytes) {
  return Data(bytes.begin(), bytes.end());
}

bool holds(const Dictionary& content, std::string_view key, const Value& value) {
  const Value* found = content.find(key);
  return found != nullptr && *found == value;
}

// False when there is no such text, or one that may not be sent back.
bool takeHeader(const Dictionary& content, std::string_view key, std::string& header) {
  const Value* found = content.find(key);
  if (found == nullptr || found->string() == nullptr) return false;
  header = *found->string();
  return isHeaderText(header);
}

std::optional<StoredAnswer> answerIn(const Dictionary& content, std::string_view container,
                                     std::string_view address) {
  if (!holds(content, "container", dataOf(container))) return std::nullopt;
  if (!holds(content, "address", dataOf(shownAddress(address)))) return std::nullopt;
  StoredAnswer answer;
  if (!takeHeader(content, "etag", answer.etag)) return std::nullopt;
  if (!takeHeader(content, "lastModified", answer.lastModified)) return std::nullopt;
  const Value* body = content.find("body");
  if (body == nullptr || body->data() == nullptr) return std::nullopt;
  answer.body.assign(body->data()->begin(), body->data()->end());
  return answer;
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
  // Data is base64 there, which takes four bytes for three.
  const auto whole = readWholeFile(files_, pathFor(address), 2 * bodyLimit_ + kHeadBytes);
  if (!whole.ok() || whole->status.owner != files_.user()) return std::nullopt;
  const PlistResult read = readPropertyList(whole->bytes);
  if (read.value.dictionary() == nullptr) return std::nullopt;
  auto answer = answerIn(*read.value.dictionary(), container_, address);
  if (!answer || answer->body.size() > bodyLimit_ || !answer->hasValidator()) return std::nullopt;
  return answer;
}

bool AnswerCache::save(const std::string& address, const StoredAnswer& answer) {
  if (folder_.empty()) return true;
  if (container_.size() + address.size() + 2 * kValidatorBytes > kHeadBytes / 2) return false;
  makePrivateFolder(files_, folder_);
  if (!folderIsOurs()) return false;
  removeDeadTemporaries(files_, folder_);
  const PlistBytes file = writePropertyList(Dictionary{{"container", dataOf(container_)},
                                                       {"address", dataOf(shownAddress(address))},
                                                       {"etag", answer.etag},
                                                       {"lastModified", answer.lastModified},
                                                       {"body", dataOf(answer.body)}});
  const std::string path = pathFor(address);
  if (!file.ok() || replaceFile(files_, path, file.bytes, kAnswerMode).error) return false;
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
         status->owner == files_.user() && (status->mode & kWritableByOthers) == 0;
}

std::string AnswerCache::pathFor(const std::string& address) const {
  std::string key = container_;
  key.append(1, '\0').append(address);
  return folder_ + "/" + hashOf(key).append(kSuffix);
}

bool isHeaderText(std::string_view text) noexcept {
  return text.size() <= kValidatorBytes &&
         std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

}  // namespace fexora
