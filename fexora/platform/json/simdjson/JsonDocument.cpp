#include "fexora/platform/json/simdjson/JsonDocument.h"

#include <atomic>
#include <new>
#include <unordered_set>
#include <utility>

#include <simdjson.h>

#include "fexora/platform/json/simdjson/JsonScan.h"

namespace fexora {
namespace {

namespace dom = simdjson::dom;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// The parser's count begins at one.
constexpr std::size_t kDepth = limits::kJsonDepth + 1;

enum class Booleans : std::uint8_t { asNumbers, asBooleans };

Value valueOf(dom::element element, Booleans booleans = Booleans::asNumbers);

Value arrayOf(dom::array elements, Booleans booleans) {
  Array array;
  array.reserve(elements.size());
  for (const dom::element element : elements) array.push_back(valueOf(element, booleans));
  return array;
}

Value dictionaryOf(dom::object object, Booleans booleans) {
  std::vector<Dictionary::Entry> entries;
  entries.reserve(object.size());
  for (const dom::key_value_pair field : object) {
    entries.emplace_back(std::string(field.key), valueOf(field.value, booleans));
  }
  return Dictionary::fromEntries(entries);
}

Value booleanOf(bool value, Booleans booleans) {
  if (booleans == Booleans::asBooleans) return value;
  return value ? 1 : 0;
}

Value valueOf(dom::element element, Booleans booleans) {
  switch (element.type()) {
    case dom::element_type::ARRAY:
      return arrayOf(element.get_array().value_unsafe(), booleans);
    case dom::element_type::OBJECT:
      return dictionaryOf(element.get_object().value_unsafe(), booleans);
    case dom::element_type::INT64:
      return element.get_int64().value_unsafe();
    case dom::element_type::UINT64:
      return element.get_uint64().value_unsafe();
    case dom::element_type::DOUBLE:
      return element.get_double().value_unsafe();
    case dom::element_type::STRING:
      return element.get_string().value_unsafe();
    case dom::element_type::BOOL:
      return booleanOf(element.get_bool().value_unsafe(), booleans);
    case dom::element_type::NULL_VALUE:
      return {};
  }
  return {};
}

std::optional<std::string> repeatedKeyOf(dom::element element) {
  dom::array list;
  if (element.get(list) == simdjson::SUCCESS) {
    for (const dom::element each : list) {
      if (auto key = repeatedKeyOf(each)) return key;
    }
  }
  dom::object object;
  if (element.get(object) != simdjson::SUCCESS) return std::nullopt;
  std::unordered_set<std::string_view> keys;
  for (const dom::key_value_pair field : object) {
    if (!keys.insert(field.key).second) return std::string(field.key);
    if (auto key = repeatedKeyOf(field.value)) return key;
  }
  return std::nullopt;
}

class ObjectSource final : public MapSource {
 public:
  explicit ObjectSource(dom::object object) noexcept : object_(object) {}

  const Value* find(std::string_view key, Value& scratch) const override {
    dom::element element;
    if (object_.at_key(key).get(element) != simdjson::SUCCESS) return nullptr;
    scratch = valueOf(element);
    return &scratch;
  }

  void readText(std::string_view key, std::string& text) const override {
    std::string_view found;
    if (object_.at_key(key).get(found) == simdjson::SUCCESS) text = found;
  }

  void visitDictionary(std::string_view key, const Visitor& visit) const override {
    dom::object object;
    if (object_.at_key(key).get(object) == simdjson::SUCCESS) visit(ObjectSource(object), 1);
  }

  bool visitDictionaries(std::string_view key, const Visitor& visit) const override {
    dom::array list;
    if (object_.at_key(key).get(list) != simdjson::SUCCESS) return false;
    std::size_t left = 0;
    for (const dom::element element : list) {
      if (!element.is_object()) return false;
      ++left;
    }
    for (const dom::element element : list) {
      visit(ObjectSource(element.get_object().value_unsafe()), left--);
    }
    return true;
  }

 private:
  dom::object object_;
};

}  // namespace

// The parser owns what the root refers to. One that has read is kept for the next text, since its
// buffers are of the size that the C library gives back to the system and takes anew each time;
// those of a large text are not.
class JsonDocument::Parsed {
 public:
  static Parsed* take() {
    Parsed* const kept = kept_.exchange(nullptr, std::memory_order_acquire);
    return kept != nullptr ? kept : new Parsed;
  }
  static void giveBack(Parsed* parsed) noexcept {
    constexpr std::size_t kLargestKept = std::size_t{256} << 10;
    Parsed* none = nullptr;
    if (parsed->parser_.capacity() > kLargestKept ||
        !kept_.compare_exchange_strong(none, parsed, std::memory_order_release)) {
      delete parsed;
    }
  }

  simdjson::error_code parse(std::string_view text) {
    // The parser copies what there is, even when that is nothing at no address.
    if (text.empty()) return simdjson::EMPTY;
    if (parser_.capacity() < text.size() || parser_.max_depth() != kDepth) {
      if (const auto error = parser_.allocate(text.size(), kDepth)) return error;
    }
    return parser_.parse(text.data(), text.size()).get(root_);
  }
  std::unique_ptr<MapSource> object() const {
    dom::object object;
    if (root_.get(object) != simdjson::SUCCESS) return nullptr;
    return std::make_unique<ObjectSource>(object);
  }
  const dom::element& root() const { return root_; }

 private:
  static std::atomic<Parsed*> kept_;

  dom::parser parser_;
  dom::element root_;
};

std::atomic<JsonDocument::Parsed*> JsonDocument::Parsed::kept_ = nullptr;

void JsonDocument::GiveBack::operator()(Parsed* parsed) const noexcept {
  Parsed::giveBack(parsed);
}

JsonDocument::JsonDocument(std::string_view text, std::size_t values) : parsed_(Parsed::take()) {
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  // A parser of today would skip one more.
  if (text.starts_with(kByteOrderMark)) {
    reason_ = "it begins with two byte order marks";
    return;
  }
  read(text, values);
}

JsonDocument::~JsonDocument() = default;

Value JsonDocument::whole() const {
  return state_ == State::value ? valueOf(parsed_->root(), Booleans::asBooleans) : Value();
}

std::optional<std::string> JsonDocument::repeatedKey() const {
  return state_ == State::value ? repeatedKeyOf(parsed_->root()) : std::nullopt;
}

void JsonDocument::read(std::string_view text, std::size_t values) {
  // Each value but the last takes two bytes at least: a shorter text needs no count.
  const bool mayBeTooMany = text.size() / 2 >= values;
  if (mayBeTooMany && scanJson(text).values > values) {
    state_ = State::tooLarge;
    reason_ = "it holds too many values";
    return;
  }
  auto error = parsed_->parse(text);
  // How the parser says that a number does not fit depends on its version; a fault stays one.
  if (error && error != simdjson::MEMALLOC) error = parsed_->parse(scanJson(text).text);
  if (error == simdjson::MEMALLOC) throw std::bad_alloc();
  if (error) {
    reason_ = simdjson::error_message(error);
    return;
  }
  state_ = State::value;
  object_ = parsed_->object();
}

}  // namespace fexora
