// The last answer to each request, kept on disk for its revalidation.
//
// One file an address and container, the last limits::kKeptAnswers of them, in a folder that only
// its user may write. A file is a property list of `container`, `address` (without user, secret and
// query: see ShownAddress.h; the file's name tells the whole ones apart) and `body` as data, `etag`
// and `lastModified` as text; one that is not (cut off, of other kinds, for another address, too
// large, a link) counts as none. Nothing here ever matters to the outcome of a request but for
// what need not be sent again. One thread at a time. Nothing throws but for memory that cannot be
// had.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "fexora/platform/files/Files.h"

namespace fexora {

struct StoredAnswer {
  std::string etag;          // empty: the service gave none
  std::string lastModified;  // likewise
  std::string body;          // inflated, not decoded

  bool hasValidator() const noexcept { return !etag.empty() || !lastModified.empty(); }
};

class AnswerCache {
 public:
  // `folder` empty: nothing is kept. A body over `bodyLimit` counts as none.
  AnswerCache(Files& files, std::string folder, std::string container, std::size_t bodyLimit);

  std::optional<StoredAnswer> load(const std::string& address);
  // False when it could not be kept; then what was kept before stays.
  bool save(const std::string& address, const StoredAnswer& answer);

 private:
  bool folderIsOurs();
  void removeOldest(const std::string& kept);
  std::string pathFor(const std::string& address) const;

  Files& files_;
  std::string folder_;
  std::string container_;
  std::size_t bodyLimit_;
};

// Whether the text of a validator may be sent back in a header: printable ASCII of a sane length.
bool isHeaderText(std::string_view text) noexcept;

}  // namespace fexora
