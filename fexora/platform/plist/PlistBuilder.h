// Builds a value from the elements of an XML property list as they come by, and rejects whatever is
// out of place.
//
// Knows nothing of the parser that finds the elements. Each call answers false when the list is
// rejected; error() then says why, and no further call may follow. May throw std::bad_alloc.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fexora/platform/values/Value.h"

namespace fexora {

class FEXORA_API PlistBuilder {
 public:
  bool begin(std::string_view tag);
  bool text(std::string_view run);
  bool end();

  // The value of the closed root element; null before that.
  Value takeRoot() { return std::move(root_); }
  const std::string& error() const noexcept { return error_; }

 private:
  enum class Tag : std::uint8_t {
    none,
    plist,
    dict,
    array,
    key,
    string,
    integer,
    real,
    truth,
    falsehood,
    date,
    data
  };
  // An open element that holds others.
  struct Frame {
    Tag tag;
    bool keyPending;    // a dictionary's key awaits its value
    std::size_t first;  // where its items or entries begin
  };

  static Tag tagOf(std::string_view name) noexcept;
  bool reject(std::string why);
  bool beginLeaf(Tag tag);
  bool beginContainer(Tag tag);
  bool admitsValue();
  bool endLeaf();
  bool endContainer();
  bool endKey();
  bool addBoolean(bool value);
  bool addInteger();
  bool addReal();
  bool addDate();
  bool addData();
  bool add(Value value);

  std::vector<Frame> frames_;
  Tag leaf_ = Tag::none;
  std::string text_;  // of the open leaf
  // Of all open containers, the outer ones first: cut off at the inner one's beginning when it
  // ends.
  std::vector<Value> items_;
  std::vector<Dictionary::Entry> entries_;
  Value root_;
  std::size_t objects_ = 0;
  std::string error_;
};

}  // namespace fexora
