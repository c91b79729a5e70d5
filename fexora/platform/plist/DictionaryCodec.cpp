#include "fexora/platform/plist/DictionaryCodec.h"

#include <algorithm>
#include <utility>

#include "fexora/platform/base/BringIn.h"
#include "fexora/platform/base/Limits.h"
#include "fexora/platform/plist/LaidOutPlistReader.h"
#include "fexora/platform/plist/PropertyListReader.h"

namespace fexora {
namespace {

// More top-level keys than this, and a dictionary is written and read anew: the work of telling the
// keys apart would outgrow what it saves.
constexpr std::size_t kKeys = 1024;

constexpr std::string_view kDictOpening = "<dict>\n";
constexpr std::string_view kClosing = "</dict>\n";
constexpr std::string_view kEmpty = "<dict/>\n";
constexpr std::string_view kKeyStart = "\t<key>";

}  // namespace

std::string_view DictionaryCodec::bytesOf(const Segment& segment) const noexcept {
  return std::string_view(*file_).substr(segment.begin, segment.size);
}

// A file in the making.
struct DictionaryCodec::Writing {
  std::string file;
  Dictionary content;
  std::vector<Segment> segments;
  PlistRest rest;     // the end of the file, and what is copied from the last one
  std::string error;  // of the first value that was not written
  int errors = 0;
};

DictionaryCodec::Encoded DictionaryCodec::encode(const Dictionary& dictionary) {
  Writing writing;
  writing.content = dictionary;
  writing.rest = unchanged(dictionary);
  const std::size_t last = file_ != nullptr ? file_->size() : 0;
  writing.file.reserve(last + last / 8);
  bringIn(writing.file.data(), last);
  writing.file += kXmlPlistHead;
  writing.file += kDictOpening;
  const std::size_t empty = writing.file.size();
  for (const Dictionary::Entry& entry : dictionary) writeEntry(entry, writing);
  if (writing.file.size() == empty) {
    writing.file.replace(empty - kDictOpening.size(), kDictOpening.size(), kEmpty);
  } else {
    writing.file += kClosing;
  }
  writing.file += kXmlPlistTail;
  if (writing.errors > 1) {
    writing.error += ", and " + std::to_string(writing.errors - 1) + " more";
  }
  // Of very many keys none is told apart at the next writing.
  if (dictionary.size() > kKeys) writing.segments.clear();
  file_ = std::make_shared<const std::string>(std::move(writing.file));
  content_ = std::move(writing.content);
  segments_ = std::move(writing.segments);
  return {*file_, std::move(writing.error)};
}

// What must have room in the file before anything new has.
PlistRest DictionaryCodec::unchanged(const Dictionary& dictionary) const noexcept {
  PlistRest rest{kClosing.size() + kXmlPlistTail.size(), 1};
  for (const Dictionary::Entry& entry : dictionary) {
    if (const Segment* const last = segmentOf(entry)) {
      rest.bytes += last->size;
      rest.objects += last->objects;
    }
  }
  return rest;
}

// The segment of an entry whose value is that of the last file.
const DictionaryCodec::Segment* DictionaryCodec::segmentOf(
    const Dictionary::Entry& entry) const noexcept {
  const Segment* const last = segmentOf(entry.first);
  return last != nullptr && last->value.sameAs(entry.second) ? last : nullptr;
}

// The entry, else what the last file has for it, else nothing.
void DictionaryCodec::writeEntry(const Dictionary::Entry& entry, Writing& writing) const {
  std::string error = writeSegment(entry, segmentOf(entry), writing);
  if (error.empty()) return;
  if (writing.errors++ == 0) writing.error = std::move(error);
  const Value* const last = content_.find(entry.first);
  if (last != nullptr && writeSegment({entry.first, *last}, nullptr, writing).empty()) {
    writing.content.set(entry.first, *last);
  } else {
    writing.content.remove(entry.first);
  }
}

// `same` is the entry in the last file, or null. Answers with the reason when it is not written.
std::string DictionaryCodec::writeSegment(const Dictionary::Entry& entry, const Segment* same,
                                          Writing& writing) const {
  Segment segment{entry.first, entry.second, writing.file.size()};
  if (same != nullptr) {
    writing.file += bytesOf(*same);
    segment.objects = same->objects;
    segment.exact = same->exact;
    writing.rest.bytes -= same->size;
  } else {
    XmlPlistWriter writer(writing.file, writing.rest);
    if (!writer.appendRootEntry(entry)) {
      writing.file.resize(segment.begin);
      return writer.error();
    }
    segment.objects = writer.objects();
    segment.exact = writer.isExact();
    writing.rest.objects += segment.objects;
  }
  segment.size = writing.file.size() - segment.begin;
  writing.segments.push_back(std::move(segment));
  return {};
}

DictionaryCodec::Decoded DictionaryCodec::decode(std::string bytes) {
  auto file = std::make_shared<const std::string>(std::move(bytes));
  std::vector<Segment> segments;
  Decoded result;
  if (readSegments(file, segments)) {
    std::vector<Dictionary::Entry> entries;
    entries.reserve(segments.size());
    for (const Segment& segment : segments) entries.emplace_back(segment.key, segment.value);
    result.dictionary = Dictionary::fromEntries(entries);
  } else {
    segments.clear();
    result = decodeAnew(*file);
    if (!result.ok()) return result;
  }
  file_ = std::move(file);
  content_ = result.dictionary;
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
bool DictionaryCodec::readSegments(const Bytes& file, std::vector<Segment>& segments) const {
  const std::string_view bytes = *file;
  if (!bytes.starts_with(kXmlPlistHead)) return false;
  std::size_t at = kXmlPlistHead.size();
  if (!bytes.substr(at).starts_with(kDictOpening)) return false;
  at += kDictOpening.size();
  std::size_t objects = 1;
  while (bytes.substr(at).starts_with(kKeyStart)) {
    Segment segment;
    if (segments.size() == kKeys || !readSegment(file, at, segment)) return false;
    if (!segments.empty() && segments.back().key >= segment.key) return false;
    objects += segment.objects;
    at += segment.size;
    segments.push_back(std::move(segment));
  }
  const std::string_view rest = bytes.substr(at);
  return objects <= limits::kPropertyListObjects && rest.starts_with(kClosing) &&
         rest.substr(kClosing.size()) == kXmlPlistTail;
}

bool DictionaryCodec::readSegment(const Bytes& file, std::size_t begin, Segment& out) const {
  const std::string_view rest = std::string_view(*file).substr(begin);
  const std::string_view key =
      rest.substr(kKeyStart.size(), rest.find('<', kKeyStart.size()) - kKeyStart.size());
  if (const Segment* const last = segmentAt(rest, key)) {
    out = *last;
    out.begin = begin;
    return true;
  }
  Dictionary::Entry entry;
  LaidOutPlistReader reader(file, begin);
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
  const Segment* const last = segmentOf(key);
  return last != nullptr && last->exact && rest.starts_with(bytesOf(*last)) ? last : nullptr;
}

const DictionaryCodec::Segment* DictionaryCodec::segmentOf(std::string_view key) const noexcept {
  const auto at =
      std::lower_bound(segments_.begin(), segments_.end(), key,
                       [](const Segment& segment, std::string_view k) { return segment.key < k; });
  return at != segments_.end() && at->key == key ? &*at : nullptr;
}

}  // namespace fexora
