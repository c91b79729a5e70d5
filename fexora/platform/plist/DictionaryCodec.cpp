#include "fexora/platform/plist/DictionaryCodec.h"

#include <algorithm>
#include <utility>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/plist/LaidOutPlistReader.h"
#include "fexora/platform/plist/PropertyListReader.h"
#include "fexora/platform/plist/PropertyListWriter.h"
#include "fexora/platform/plist/XmlPlistWriter.h"

namespace fexora {
namespace {

// More top-level keys than this, and a dictionary is written and read whole: the work of telling
// the keys apart would outgrow what it saves.
constexpr std::size_t kKeys = 1024;

constexpr std::string_view kOpening = "<dict>\n";
constexpr std::string_view kClosing = "</dict>\n";
constexpr std::string_view kKeyStart = "\t<key>";

}  // namespace

std::string_view DictionaryCodec::bytesOf(const Segment& segment) const noexcept {
  return std::string_view(file_).substr(segment.begin, segment.size);
}

DictionaryCodec::Encoded DictionaryCodec::encode(const Dictionary& dictionary) {
  std::string file;
  std::vector<Segment> segments;
  // The plain writer finds the words for a failure, too.
  if (!writeSegments(dictionary, file, segments)) return encodeAnew(dictionary);
  file_ = std::move(file);
  segments_ = std::move(segments);
  return {file_, {}, {}};
}

// False when something cannot be written, or is better written whole.
bool DictionaryCodec::writeSegments(const Dictionary& dictionary, std::string& file,
                                    std::vector<Segment>& segments) const {
  if (dictionary.empty() || dictionary.size() > kKeys) return false;
  file.reserve(file_.size() + file_.size() / 8);
  file += kXmlPlistHead;
  file += kOpening;
  segments.reserve(dictionary.size());
  std::size_t objects = 1;
  auto last = segments_.begin();
  for (const Dictionary::Entry& entry : dictionary) {
    while (last != segments_.end() && last->key < entry.first) ++last;
    const bool known = last != segments_.end() && last->key == entry.first;
    Segment segment{entry.first, entry.second, file.size()};
    if (!writeSegment(entry, known ? &*last : nullptr, file, segment)) return false;
    objects += segment.objects;
    segments.push_back(std::move(segment));
  }
  file += kClosing;
  file += kXmlPlistTail;
  return objects <= limits::kPropertyListObjects && file.size() <= limits::kStoreFileBytes;
}

bool DictionaryCodec::writeSegment(const Dictionary::Entry& entry, const Segment* last,
                                   std::string& file, Segment& out) const {
  if (last != nullptr && last->value.sameAs(entry.second)) {
    file += bytesOf(*last);
    out.objects = last->objects;
    out.exact = last->exact;
  } else {
    XmlPlistWriter writer(file);
    if (!writer.appendRootEntry(entry)) return false;
    out.objects = writer.objects();
    out.exact = writer.isExact();
  }
  out.size = file.size() - out.begin;
  return true;
}

DictionaryCodec::Encoded DictionaryCodec::encodeAnew(const Dictionary& dictionary) {
  PlistBytes whole = writePropertyList(dictionary);
  if (!whole.ok()) return {{}, std::move(whole.error), whole.fault};
  file_ = std::move(whole.bytes);
  segments_.clear();
  return {file_, {}, {}};
}

DictionaryCodec::Decoded DictionaryCodec::decode(std::string bytes) {
  std::vector<Segment> segments;
  Decoded result;
  if (readSegments(bytes, segments)) {
    std::vector<Dictionary::Entry> entries;
    entries.reserve(segments.size());
    for (const Segment& segment : segments) entries.emplace_back(segment.key, segment.value);
    result.dictionary = Dictionary::fromEntries(entries);
  } else {
    segments.clear();
    result = decodeAnew(bytes);
    if (!result.ok()) return result;
  }
  file_ = std::move(bytes);
  segments_ = std::move(segments);
  return result;
}

DictionaryCodec::Decoded DictionaryCodec::decodeAnew(std::string_view bytes) {
  PlistResult whole = readPropertyList(bytes);
  if (!whole.ok()) return {{}, std::move(whole.error), whole.fault};
  const Dictionary* dictionary = whole.value.dictionary();
  if (dictionary == nullptr) return {{}, "the root is no dictionary"};
  return {*dictionary, {}, {}};
}

// False when the file is not laid out as the writer does it, or holds an error.
//
// Only the exact head leads to the first key, and each step goes from the beginning of a top-level
// key's line to the end of its value's, read now or on an earlier reading of the same bytes. So
// neither text nor comments that look like keys can mislead it.
bool DictionaryCodec::readSegments(std::string_view bytes, std::vector<Segment>& segments) const {
  if (!bytes.starts_with(kXmlPlistHead)) return false;
  std::size_t at = kXmlPlistHead.size();
  if (!bytes.substr(at).starts_with(kOpening)) return false;
  at += kOpening.size();
  std::size_t objects = 1;
  while (bytes.substr(at).starts_with(kKeyStart)) {
    Segment segment;
    if (segments.size() == kKeys || !readSegment(bytes, at, segment)) return false;
    if (!segments.empty() && segments.back().key >= segment.key) return false;
    objects += segment.objects;
    at += segment.size;
    segments.push_back(std::move(segment));
  }
  const std::string_view rest = bytes.substr(at);
  return objects <= limits::kPropertyListObjects && rest.starts_with(kClosing) &&
         rest.substr(kClosing.size()) == kXmlPlistTail;
}

bool DictionaryCodec::readSegment(std::string_view bytes, std::size_t begin, Segment& out) const {
  const std::string_view rest = bytes.substr(begin);
  const std::string_view key =
      rest.substr(kKeyStart.size(), rest.find('<', kKeyStart.size()) - kKeyStart.size());
  if (const Segment* const last = segmentAt(rest, key)) {
    out = *last;
    out.begin = begin;
    return true;
  }
  Dictionary::Entry entry;
  LaidOutPlistReader reader(rest);
  if (!reader.readRootEntry(entry)) return false;
  out = {std::move(entry.first),
         std::move(entry.second),
         begin,
         rest.size() - reader.rest().size(),
         reader.objects(),
         true};
  return true;
}

// The segment of `key` in the last file, when it stands at the head of `rest` just as it stood
// there.
const DictionaryCodec::Segment* DictionaryCodec::segmentAt(std::string_view rest,
                                                           std::string_view key) const noexcept {
  const auto at =
      std::lower_bound(segments_.begin(), segments_.end(), key,
                       [](const Segment& segment, std::string_view k) { return segment.key < k; });
  const bool isHere =
      at != segments_.end() && at->key == key && at->exact && rest.starts_with(bytesOf(*at));
  return isHere ? &*at : nullptr;
}

}  // namespace fexora
