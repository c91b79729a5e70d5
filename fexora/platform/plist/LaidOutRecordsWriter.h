// Makes a list of records the way it would be read from a property list (LaidOutRecords.h), without
// a value for each record: ten thousand rates that come in are written into the store as they are.
//
// Records whose fields are texts that stand in XML as they are and finite numbers, with the same
// keys in each. One thread; may throw std::bad_alloc.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "fexora/platform/plist/LaidOutRecords.h"
#include "fexora/platform/values/Value.h"

namespace fexora {

class FEXORA_API LaidOutRecordsWriter {
 public:
  // With `depth` containers open around the list's records, of which there will be about `records`.
  LaidOutRecordsWriter(std::size_t depth, std::size_t records) noexcept
      : depth_(depth), records_(records) {}

  // One record more, its fields by ascending key. False when it is none of the kind: then there is
  // no list.
  bool add(std::span<const Dictionary::Entry> fields);
  // The list; null for one that is read sooner than looked through. Nothing is added from then on.
  std::shared_ptr<const LaidOutRecords> take();

 private:
  struct Line {
    std::string key;
    std::string before;  // the lines before its value, up to its tabs
  };

  bool begin(std::span<const Dictionary::Entry> fields);
  std::size_t mostOf(std::span<const Dictionary::Entry> fields) const noexcept;

  std::size_t depth_;
  std::size_t records_;
  std::vector<Line> lines_;
  std::string closing_;
  std::string text_;  // longer than what was written
  std::size_t size_ = 0;
  std::size_t count_ = 0;  // of the records that were written
};

}  // namespace fexora
