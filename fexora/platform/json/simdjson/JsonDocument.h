// A JSON text (RFC 8259) on its way into a record, without a tree of Values in between.
//
// Numbers without fraction and exponent that fit 64 bits become integers, all others reals; one
// beyond the doubles is a text, so that one odd field does not cost the whole. True and false
// become the integers 1 and 0, but for whole(). Of equal keys the first stays. A byte order mark
// before the text is skipped. One thread at a time, several documents on several. Nothing throws
// but for memory that cannot be had.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/mapping/MapSource.h"

namespace fexora {

class JsonDocument {
 public:
  enum class State : std::uint8_t {
    value,
    notJson,   // a fault in the text, UTF-8 and surrogates included, or nested too deep
    tooLarge,  // more than `values` values
  };

  // Lists and objects with something in them may be nested limits::kJsonDepth deep.
  explicit JsonDocument(std::string_view text, std::size_t values = limits::kJsonValues);
  JsonDocument(const JsonDocument&) = delete;
  JsonDocument& operator=(const JsonDocument&) = delete;
  ~JsonDocument();

  State state() const noexcept { return state_; }
  // For people, unless the text is a value.
  const std::string& reason() const noexcept { return reason_; }
  // The object at the root; null when there is none. Valid as long as this document.
  const MapSource* object() const noexcept { return object_.get(); }
  // The whole as Values, for who must see every key; here true and false are booleans. Null when
  // there is none. May throw std::bad_alloc.
  Value whole() const;
  // A key that an object in it has twice, the first that is found; nothing when each has its own.
  // May throw std::bad_alloc.
  std::optional<std::string> repeatedKey() const;

 private:
  class Parsed;
  struct GiveBack {
    void operator()(Parsed* parsed) const noexcept;
  };
  void read(std::string_view text, std::size_t values);

  State state_ = State::notJson;
  std::string reason_;
  std::unique_ptr<Parsed, GiveBack> parsed_;
  std::unique_ptr<MapSource> object_;
};

}  // namespace fexora
