#include "fexora/platform/values/Value.h"

#include <algorithm>
#include <atomic>
#include <bit>
#include <new>

#include "fexora/platform/values/DeferredList.h"

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

// Bytes of text that stay in place (what every common std::string holds without an allocation).
constexpr std::size_t kShortTextBytes = 15;

}  // namespace

struct Dictionary::Block {
  Block() : references(1), count(0) {}

  Entry* entries() noexcept { return reinterpret_cast<Entry*>(this + 1); }

  static Block* make(std::size_t capacity) {
    static_assert(alignof(Entry) <= alignof(Block) && sizeof(Block) % alignof(Entry) == 0);
    void* memory = ::operator new(sizeof(Block) + capacity * sizeof(Entry));
    return new (memory) Block();
  }
  void destroy() noexcept {
    std::destroy_n(entries(), count);
    std::destroy_at(this);
    ::operator delete(this);
  }

  std::atomic<std::size_t> references;
  std::size_t count;
};

// Fills a block in key order; what it has not handed over goes with it.
class Dictionary::Builder {
 public:
  explicit Builder(std::size_t capacity) : block_(Block::make(capacity)) {}
  Builder(const Builder&) = delete;
  Builder& operator=(const Builder&) = delete;
  ~Builder() {
    if (block_ != nullptr) block_->destroy();
  }

  template <class AnyEntry>
  void add(AnyEntry&& entry) {
    new (block_->entries() + block_->count) Entry(std::forward<AnyEntry>(entry));
    ++block_->count;
  }
  const Entry& back() const noexcept { return block_->entries()[block_->count - 1]; }
  Dictionary take() {
    Dictionary dictionary;
    dictionary.block_ = std::exchange(block_, nullptr);
    return dictionary;
  }

 private:
  Block* block_;
};

Dictionary::Dictionary(std::initializer_list<Entry> entries) {
  std::vector<Entry> own(entries);
  *this = fromEntries(own);
}

Dictionary::Dictionary(const Dictionary& other) noexcept : block_(other.block_) {
  if (block_ != nullptr) block_->references.fetch_add(1, std::memory_order_relaxed);
}

void Dictionary::release() noexcept {
  if (block_ == nullptr) return;
  if (block_->references.fetch_sub(1, std::memory_order_acq_rel) == 1) block_->destroy();
}

Dictionary Dictionary::fromEntries(std::span<Entry> entries) {
  if (entries.empty()) return {};
  if (!std::is_sorted(entries.begin(), entries.end(), ByKey())) {
    std::stable_sort(entries.begin(), entries.end(), ByKey());
  }
  Builder builder(entries.size());
  const std::string* last = nullptr;
  for (Entry& entry : entries) {
    if (last != nullptr && entry.first == *last) continue;
    builder.add(std::move(entry));
    // The moved-from key no longer serves: the one in the block does.
    last = &builder.back().first;
  }
  return builder.take();
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
  const Entry* at = std::lower_bound(begin(), end(), key, ByKey());
  const bool present = at != end() && at->first == key;
  if (present && block_->references.load(std::memory_order_acquire) == 1) {
    block_->entries()[at - begin()].second = std::move(value);
    return;
  }
  Builder builder(size() + 1);
  for (const Entry* entry = begin(); entry != at; ++entry) builder.add(*entry);
  builder.add(Entry(std::string(key), std::move(value)));
  for (const Entry* entry = present ? at + 1 : at; entry != end(); ++entry) builder.add(*entry);
  *this = builder.take();
}

void Dictionary::remove(std::string_view key) {
  const Value* found = find(key);
  if (found == nullptr) return;
  Builder builder(size());
  for (const Entry& entry : *this) {
    if (&entry.second != found) builder.add(entry);
  }
  *this = size() > 1 ? builder.take() : Dictionary();
}

std::size_t Dictionary::size() const noexcept {
  return block_ != nullptr ? block_->count : 0;
}

const Dictionary::Entry* Dictionary::begin() const noexcept {
  return block_ != nullptr ? block_->entries() : nullptr;
}

const Dictionary::Entry* Dictionary::end() const noexcept {
  return block_ != nullptr ? block_->entries() + block_->count : nullptr;
}

bool operator==(const Dictionary& a, const Dictionary& b) noexcept {
  return a.block_ == b.block_ || std::equal(a.begin(), a.end(), b.begin(), b.end());
}

void Value::setText(std::string text) {
  if (text.size() <= kShortTextBytes) {
    content_ = std::move(text);
  } else {
    content_ = std::make_shared<const std::string>(std::move(text));
  }
}

// Here, and not in the header: a swap is code for each pair of kinds, in every unit that has it.
Value& Value::operator=(Value other) noexcept {
  content_.swap(other.content_);
  return *this;
}

Value::Value(const char* text) {
  if (text != nullptr) setText(text);
}
Value::Value(std::string text) {
  setText(std::move(text));
}
Value::Value(std::string_view text) {
  setText(std::string(text));
}
Value::Value(Data data) : content_(std::make_shared<const Data>(std::move(data))) {}
Value::Value(Array array) : content_(std::make_shared<const Array>(std::move(array))) {}
Value::Value(std::shared_ptr<const DeferredList> list) noexcept : content_(std::move(list)) {}
Value::Value(Dictionary dictionary) noexcept : content_(std::move(dictionary)) {}

const Array* Value::deferredElements() const noexcept {
  return deferred()->array();
}

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
      return string() == other.string() ||
             (content_.index() == kShortText && *string() == *other.string());
    case Kind::data:
      return data() == other.data();
    case Kind::array:
      // Without asking for the elements of either.
      return deferred() == other.deferred() && payload<Array>() == other.payload<Array>();
    case Kind::dictionary:
      return dictionary()->block_ == other.dictionary()->block_;
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
    case Value::Kind::array: {
      const Array* const some = a.array();
      const Array* const others = b.array();
      return some == others || (some != nullptr && others != nullptr && *some == *others);
    }
    case Value::Kind::dictionary:
      return *a.dictionary() == *b.dictionary();
  }
  return false;
}

}  // namespace fexora
