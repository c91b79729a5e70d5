// The elements of an XML property list, as PropertyListWriter.h lays them out.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "fexora/platform/values/Value.h"

namespace fexora {

class LaidOutRecords;

// What stands before and after the root's element.
inline constexpr std::string_view kXmlPlistHead =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
    "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n";
inline constexpr std::string_view kXmlPlistTail = "</plist>\n";

// What else the same file will hold: the text must leave room for it.
struct PlistRest {
  std::size_t bytes = 0;
  std::size_t objects = 0;
};

// Appends to a text of the caller's, which outlives it. Each operation answers false when something
// cannot be written; the text then ends somewhere in the middle, and error() says what and where.
// May throw std::bad_alloc.
class XmlPlistWriter {
 public:
  explicit XmlPlistWriter(std::string& out, PlistRest rest = {}) : out_(out), rest_(rest) {}

  bool appendRoot(const Value& value);
  // An entry of the root dictionary, as appendRoot writes it inside that dictionary's element.
  bool appendRootEntry(const Dictionary::Entry& entry);

  // Whether the text, with the rest, is short enough to be read back.
  bool isReadable();

  std::string error() const;
  // Objects written: every value counts, keys do not.
  std::size_t objects() const noexcept { return objects_; }
  // Whether all of it reads back bit for bit: no date had a fraction, no number was a not-a-number.
  bool isExact() const noexcept { return exact_; }

 private:
  bool reject(std::string_view why);
  bool rejectAt(std::string_view where);
  bool append(const Value& value, std::size_t depth);
  bool appendNumber(const NSNumber& number);
  bool appendText(std::string_view open, std::string_view text, std::string_view close);
  bool appendDate(const Date& date);
  bool appendArray(const Array& array, std::size_t depth);
  bool appendRecords(const LaidOutRecords& records);
  bool appendDictionary(const Dictionary& dictionary, std::size_t depth);
  bool appendEntry(const Dictionary::Entry& entry, std::size_t depth);

  std::string& out_;
  const PlistRest rest_;
  std::string why_;
  std::string where_;  // the way to what was rejected, built from its end
  std::size_t objects_ = 0;
  bool exact_ = true;
};

}  // namespace fexora
