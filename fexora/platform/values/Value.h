// What a property list or a JSON text can hold: nothing, a number, text, a date, bytes, a list or a
// dictionary with text keys.
//
// A Value is immutable and cheap to copy: text, bytes, lists and dictionaries share their payload.
// Copies may be read on any thread. Text is UTF-8 by convention; what must be UTF-8 (the writers of
// files) checks it. Nothing here throws but for memory that cannot be had.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "fexora/platform/base/Export.h"
#include "fexora/platform/values/Date.h"
#include "fexora/platform/values/NSNumber.h"

namespace fexora {

class DeferredList;
class Value;

using Array = std::vector<Value>;
using Data = std::vector<std::uint8_t>;

// Text keys, each once, kept in byte order. A copy shares its content until one of the two changes.
class FEXORA_API Dictionary {
 public:
  using Entry = std::pair<std::string, Value>;

  Dictionary() noexcept = default;
  Dictionary(std::initializer_list<Entry> entries);
  Dictionary(const Dictionary& other) noexcept;
  Dictionary(Dictionary&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}
  Dictionary& operator=(Dictionary other) noexcept {
    std::swap(block_, other.block_);
    return *this;
  }
  ~Dictionary() { release(); }

  // Moves the entries out of `entries`, which may be in any order; of several with one key the
  // first stays.
  static Dictionary fromEntries(std::span<Entry> entries);

  // Null when the key is absent; valid until this dictionary changes.
  const Value* find(std::string_view key) const noexcept;
  void set(std::string_view key, Value value);
  void remove(std::string_view key);

  std::size_t size() const noexcept;
  bool empty() const noexcept { return size() == 0; }
  const Entry* begin() const noexcept;
  const Entry* end() const noexcept;

  friend FEXORA_API bool operator==(const Dictionary& a, const Dictionary& b) noexcept;

 private:
  friend class Value;
  // A count of references with the entries behind it: one allocation per dictionary.
  struct Block;
  class Builder;

  void release() noexcept;

  Block* block_ = nullptr;  // null when empty; never changed while shared
};

class FEXORA_API Value {
 public:
  enum class Kind : std::uint8_t { null, number, string, date, data, array, dictionary };

  Value() noexcept = default;
  Value(const Value& other) = default;
  Value(Value&& other) noexcept = default;
  // By value: what is assigned may be a part of what this value alone holds.
  Value& operator=(Value other) noexcept;
  ~Value() = default;
  // NOLINTBEGIN(google-explicit-constructor): each kind of content stands wherever a Value is
  // taken.
  Value(NSNumber number) noexcept : content_(number) {}
  Value(std::same_as<bool> auto value) noexcept : content_(NSNumber(value)) {}
  Value(PlainInteger auto value) noexcept : content_(NSNumber(value)) {}
  Value(std::floating_point auto value) noexcept : content_(NSNumber(value)) {}
  Value(const char* text);  // a null pointer gives the null value
  Value(std::string text);
  Value(std::string_view text);
  Value(Date date) noexcept : content_(date) {}
  Value(Data data);
  Value(Array array);
  Value(std::shared_ptr<const DeferredList> list) noexcept;  // not null
  Value(Dictionary dictionary) noexcept;
  // NOLINTEND(google-explicit-constructor)

  Kind kind() const noexcept {
    if (content_.index() == kShortText) return Kind::string;
    return content_.index() == kDeferred ? Kind::array : static_cast<Kind>(content_.index());
  }
  bool isNull() const noexcept { return kind() == Kind::null; }

  // The content when the value is of that kind, else null; valid as long as this value.
  const NSNumber* number() const noexcept { return std::get_if<NSNumber>(&content_); }
  const std::string* string() const noexcept {
    const auto* text = std::get_if<std::string>(&content_);
    return text != nullptr ? text : payload<std::string>();
  }
  const Date* date() const noexcept { return std::get_if<Date>(&content_); }
  const Data* data() const noexcept { return payload<Data>(); }
  // Null, too, without memory for the elements of a list that was deferred until now.
  const Array* array() const noexcept {
    return content_.index() == kDeferred ? deferredElements() : payload<Array>();
  }
  // What the elements of a list are made of when they are asked for; else null.
  const DeferredList* deferred() const noexcept { return payload<DeferredList>(); }
  const Dictionary* dictionary() const noexcept { return std::get_if<Dictionary>(&content_); }

  // Two values for which this is true are equal and of one kind; false says nothing. O(1): numbers,
  // dates and short texts by content and kind, the rest by the payload that copies share.
  bool sameAs(const Value& other) const noexcept;

  friend FEXORA_API bool operator==(const Value& a, const Value& b) noexcept;

 private:
  template <class T>
  const T* payload() const noexcept {
    const auto* shared = std::get_if<std::shared_ptr<const T>>(&content_);
    return shared != nullptr ? shared->get() : nullptr;
  }

  // A text that fits into a std::string without an allocation is held in place: most texts here
  // are codes and keys.
  static constexpr std::size_t kShortText = 7;
  static constexpr std::size_t kDeferred = 8;
  void setText(std::string text);
  const Array* deferredElements() const noexcept;

  std::variant<std::monostate, NSNumber, std::shared_ptr<const std::string>, Date,
               std::shared_ptr<const Data>, std::shared_ptr<const Array>, Dictionary, std::string,
               std::shared_ptr<const DeferredList>>
      content_;
};

}  // namespace fexora
