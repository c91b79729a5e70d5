#include "fexora/platform/foundation/Value.h"

#include <algorithm>
#include <bit>

namespace fexora {
namespace {

// Below this many entries a plain walk beats the binary search.
constexpr std::size_t kWalk = 8;

struct ByKey {
  bool operator()(const Dictionary::Entry& a, const Dictionary::Entry& b) const noexcept {
    return a.first < b.first;
  }
  bool operator()(const Dictionary::Entry& a, std::string_view key) const noexcept {
    return a.first < key;
  }
};

}  // namespace

Dictionary::Dictionary(std::initializer_list<Entry> entries)
    : Dictionary(fromEntries(std::vector<Entry>(entries))) {}

Dictionary Dictionary::fromEntries(std::vector<Entry> entries) {
  Dictionary result;
  if (entries.empty()) return result;
  if (!std::is_sorted(entries.begin(), entries.end(), ByKey())) {
    std::stable_sort(entries.begin(), entries.end(), ByKey());
  }
  entries.erase(std::unique(entries.begin(), entries.end(),
                            [](const Entry& a, const Entry& b) { return a.first == b.first; }),
                entries.end());
  result.entries_ = std::make_shared<Entries>(std::move(entries));
  return result;
}

const Value* Dictionary::find(std::string_view key) const noexcept {
  if (size() <= kWalk) {
    for (const Entry& entry : *this) {
      if (entry.first == key) return &entry.second;
    }
    return nullptr;
  }
  const Entry* at = std::lower_bound(begin(), end(), key, ByKey());
  return at != end() && at->first == key ? &at->second : nullptr;
}

void Dictionary::set(std::string_view key, Value value) {
  if (entries_ == nullptr) {
    entries_ = std::make_shared<Entries>();
  } else if (entries_.use_count() > 1) {
    entries_ = std::make_shared<Entries>(*entries_);
  }
  const auto at = std::lower_bound(entries_->begin(), entries_->end(), key, ByKey());
  if (at != entries_->end() && at->first == key) {
    at->second = std::move(value);
  } else {
    entries_->emplace(at, std::string(key), std::move(value));
  }
}

void Dictionary::remove(std::string_view key) {
  if (find(key) == nullptr) return;
  if (entries_.use_count() > 1) entries_ = std::make_shared<Entries>(*entries_);
  entries_->erase(std::lower_bound(entries_->begin(), entries_->end(), key, ByKey()));
}

std::size_t Dictionary::size() const noexcept {
  return entries_ ? entries_->size() : 0;
}

const Dictionary::Entry* Dictionary::begin() const noexcept {
  return entries_ ? entries_->data() : nullptr;
}

const Dictionary::Entry* Dictionary::end() const noexcept {
  return entries_ ? entries_->data() + entries_->size() : nullptr;
}

bool operator==(const Dictionary& a, const Dictionary& b) noexcept {
  return a.entries_ == b.entries_ || std::equal(a.begin(), a.end(), b.begin(), b.end());
}

Value::Value(const char* text) {
  if (text != nullptr) content_ = std::make_shared<const std::string>(text);
}
Value::Value(std::string text) : content_(std::make_shared<const std::string>(std::move(text))) {}
Value::Value(std::string_view text) : content_(std::make_shared<const std::string>(text)) {}
Value::Value(Data data) : content_(std::make_shared<const Data>(std::move(data))) {}
Value::Value(Array array) : content_(std::make_shared<const Array>(std::move(array))) {}
Value::Value(Dictionary dictionary) noexcept : content_(std::move(dictionary)) {}

bool Value::sameAs(const Value& other) const noexcept {
  if (kind() != other.kind()) return false;
  switch (kind()) {
    case Kind::null:
      return true;
    case Kind::number: {
      const NSNumber a = *number();
      const NSNumber b = *other.number();
      if (a.kind() != b.kind()) return false;
      // By bits, so that -0.0 is not 0.0 and not-a-number is itself.
      return a.kind() == NSNumber::Kind::real ? std::bit_cast<std::uint64_t>(a.doubleValue()) ==
                                                    std::bit_cast<std::uint64_t>(b.doubleValue())
                                              : a.intValue() == b.intValue();
    }
    case Kind::date:
      return *date() == *other.date();
    case Kind::string:
      return string() == other.string();
    case Kind::data:
      return data() == other.data();
    case Kind::array:
      return array() == other.array();
    case Kind::dictionary:
      return dictionary()->entries_ == other.dictionary()->entries_;
  }
  return false;
}

bool operator==(const Value& a, const Value& b) noexcept {
  if (a.kind() != b.kind()) return false;
  switch (a.kind()) {
    case Value::Kind::null:
      return true;
    case Value::Kind::number:
      return *a.number() == *b.number();
    case Value::Kind::date:
      return *a.date() == *b.date();
    case Value::Kind::string:
      return *a.string() == *b.string();
    case Value::Kind::data:
      return *a.data() == *b.data();
    case Value::Kind::array:
      return *a.array() == *b.array();
    case Value::Kind::dictionary:
      return *a.dictionary() == *b.dictionary();
  }
  return false;
}

}  // namespace fexora
