// Turns one dictionary that is written and read many times into a property-list file and back,
// doing only the work that what changed asks for.
//
// It remembers the last file, written or read: for each top-level key the value's identity
// (Value::sameAs) and where its bytes stand. Writing copies the bytes of keys whose value is the
// same; reading parses only the keys whose bytes differ, and gives the very same values for the
// others. What is read is always what readPropertyList reads, and what is written is what
// writePropertyList writes, but for numbers that stood in another form in the last file that was
// read: these keep their bytes until their value changes. A file with anything that the writer lays
// out otherwise, or with escapes or data that it met in no earlier file, is read whole.
//
// A value that cannot be written stops no other: its key keeps the value that it has in the last
// file, and is left out where it has none.
//
// Holds one copy of the last file, and as long as somebody holds a list of records that was left in
// the bytes of an earlier one (LaidOutRecords.h), that one's, too. One thread at a time. Only
// std::bad_alloc is thrown, and leaves the last file the last.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "fexora/platform/base/Export.h"
#include "fexora/platform/plist/PlistFault.h"
#include "fexora/platform/plist/XmlPlistWriter.h"
#include "fexora/platform/values/Value.h"

namespace fexora {

class FEXORA_API DictionaryCodec {
 public:
  struct Encoded {
    std::string_view bytes;  // into the codec, valid until it is next used
    std::string error;       // one line: what is not as it was given, and why; empty when all is
    bool ok() const noexcept { return error.empty(); }
  };
  struct Decoded {
    Dictionary dictionary;
    std::string error;
    PlistFault fault = PlistFault::content;  // when there is an error
    bool ok() const noexcept { return error.empty(); }
  };

  Encoded encode(const Dictionary& dictionary);
  // A root that is no dictionary is a failure. After a failure the last file stays the last.
  Decoded decode(std::string bytes);

 private:
  // One top-level key of the last file, from its line's first tab to its value's last line end.
  struct Segment {
    std::string key;
    Value value;
    std::size_t begin = 0;
    std::size_t size = 0;
    std::size_t objects = 0;
    bool exact = true;  // reading the bytes gives the value, bit for bit
  };

  struct Writing;

  void writeEntry(const Dictionary::Entry& entry, Writing& writing) const;
  std::string writeSegment(const Dictionary::Entry& entry, const Segment* same,
                           Writing& writing) const;
  PlistRest unchanged(const Dictionary& dictionary) const noexcept;
  const Segment* segmentOf(const Dictionary::Entry& entry) const noexcept;
  Decoded decodeAnew(std::string_view bytes);
  using Bytes = std::shared_ptr<const std::string>;
  bool readSegments(const Bytes& file, std::vector<Segment>& segments) const;
  bool readSegment(const Bytes& file, std::size_t begin, Segment& out) const;
  std::string_view bytesOf(const Segment& segment) const noexcept;
  const Segment* segmentAt(std::string_view rest, std::string_view key) const noexcept;
  const Segment* segmentOf(std::string_view key) const noexcept;

  Bytes file_;                     // null before the first
  Dictionary content_;             // of the file
  std::vector<Segment> segments_;  // by key, ascending, as they stand in the file
};

}  // namespace fexora
