// Reads XML property lists that are laid out exactly as PropertyListWriter.h lays them out, several
// times faster than an XML parser, which must be ready for everything else.
//
// Given who owns the bytes, it leaves lists of records in them (LaidOutRecords.h).
//
// Nothing but that layout is accepted: no attribute, comment, section, entity or other spacing, and
// in texts neither "&", ">" nor a carriage return. So each accepted byte means in XML just what it
// means here. A rejection says nothing about the bytes; XmlPlistReader judges them then.
// Any thread. May throw std::bad_alloc.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fexora/platform/values/Value.h"

namespace fexora {

class LaidOutPlistReader {
 public:
  explicit LaidOutPlistReader(std::string_view bytes) : rest_(bytes) {}
  // From `at` in the bytes on, which are not null and stay as long as a list is left in them.
  LaidOutPlistReader(std::shared_ptr<const std::string> bytes, std::size_t at)
      : owner_(std::move(bytes)), rest_(std::string_view(*owner_).substr(at)) {}

  // A whole file.
  bool readFile(Value& out);
  // One entry of the root dictionary, its two lines.
  bool readRootEntry(Dictionary::Entry& out);

  // What has not been read.
  std::string_view rest() const noexcept { return rest_; }
  // Values read, each counted.
  std::size_t objects() const noexcept { return objects_; }

 private:
  template <std::size_t Size>
  bool take(const char (&expected)[Size]) noexcept;
  bool takeTabs(std::size_t count) noexcept;
  // The text up to the next element, which must be `closing`.
  template <std::size_t Size>
  std::optional<std::string_view> takeText(const char (&closing)[Size]) noexcept;
  bool readValue(std::size_t depth, Value& out);
  bool readString(Value& out);
  bool readReal(Value& out);
  bool readInteger(Value& out);
  bool readDate(Value& out);
  bool readArray(std::size_t depth, Value& out);
  bool readRecords(std::size_t depth, Value& out);
  bool readDictionary(std::size_t depth, Value& out);
  bool readEntry(std::size_t depth, Dictionary::Entry& out);

  std::shared_ptr<const std::string> owner_;  // null when nobody is given
  std::string_view rest_;
  std::vector<Value> items_;  // of all open arrays; see CutOff.h
  std::vector<Dictionary::Entry> entries_;
  std::size_t objects_ = 0;
};

}  // namespace fexora
