#include "fexora/platform/json/simdjson/JsonDocument.h"

#include <new>
#include <utility>

#include <simdjson.h>

#include "fexora/platform/json/simdjson/JsonScan.h"

namespace fexora {
namespace {

namespace dom = simdjson::dom;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// The parser's count begins at one.
constexpr std::size_t kDepth = limits::kJsonDepth + 1;

Value valueOf(dom::element element);

Value arrayOf(dom::array elements) {
  Array array;
  array.reserve(elements.size());
  for (const dom::element element : elements) array.push_back(valueOf(element));
  return array;
}

Value dictionaryOf(dom::object object) {
  std::vector<Dictionary::Entry> entries;
  entries.reserve(object.size());
  for (const dom::key_value_pair field : object) {
    entries.emplace_back(std::string(field.key), valueOf(field.value));
  }
  return Dictionary::fromEntries(entries);
}

Value valueOf(dom::element element) {
  switch (element.type()) {
    case dom::element_type::ARRAY:
      return arrayOf(element.get_array().value_unsafe());
    case dom::element_type::OBJECT:
      return dictionaryOf(element.get_object().value_unsafe());
    case dom::element_type::INT64:
      return element.get_int64().value_unsafe();
    case dom::element_type::UINT64:
      return element.get_uint64().value_unsafe();
    case dom::element_type::DOUBLE:
      return element.get_double().value_unsafe();
    case dom::element_type::STRING:
      return element.get_string().value_unsafe();
    case dom::element_type::BOOL:
      return element.get_bool().value_unsafe() ? 1 : 0;
    case dom::element_type::NULL_VALUE:
      return {};
  }
  return {};
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

// The parser owns what the root refers to.
class JsonDocument::Parsed {
 public:
  simdjson::error_code parse(std::string_view text) {
    // The parser copies what there is, even when that is nothing at no address.
    if (text.empty()) return simdjson::EMPTY;
    const auto error = parser_.allocate(text.size(), kDepth);
    return error ? error : parser_.parse(text.data(), text.size()).get(root_);
  }
  std::unique_ptr<MapSource> object() const {
    dom::object object;
    if (root_.get(object) != simdjson::SUCCESS) return nullptr;
    return std::make_unique<ObjectSource>(object);
  }

 private:
  dom::parser parser_;
  dom::element root_;
};

JsonDocument::JsonDocument(std::string_view text, std::size_t values)
    : parsed_(std::make_unique<Parsed>()) {
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  // A parser of today would skip one more.
  if (text.starts_with(kByteOrderMark)) {
    reason_ = "it begins with two byte order marks";
    return;
  }
  read(text, values);
}

JsonDocument::~JsonDocument() = default;

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
