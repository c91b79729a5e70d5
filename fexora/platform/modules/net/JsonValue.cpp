#include "fexora/platform/modules/net/JsonValue.h"

#include <optional>
#include <span>
#include <utility>
#include <vector>

#include <simdjson.h>

#include "fexora/platform/foundation/NumberText.h"

namespace fexora {
namespace {

namespace ondemand = simdjson::ondemand;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kSpace = " \t\r\n";

// simdjson 3.0's on-demand reader misreads some reals of twenty digits and more: as 0, or as
// another number. Shorter texts it reads right.
constexpr std::size_t kExactReal = 19;

std::size_t digitRun(std::string_view text) {
  std::size_t count = 0;
  while (count < text.size() && text[count] >= '0' && text[count] <= '9') ++count;
  return count;
}

// Cuts one or more digits off the head.
bool takeDigits(std::string_view& text) {
  const std::size_t count = digitRun(text);
  text.remove_prefix(count);
  return count > 0;
}

bool takeOneOf(std::string_view& text, std::string_view marks) {
  if (text.empty() || marks.find(text.front()) == std::string_view::npos) return false;
  text.remove_prefix(1);
  return true;
}

// The grammar of RFC 8259, section 6.
bool isJsonNumber(std::string_view text) {
  takeOneOf(text, "-");
  const bool leadingZero = text.starts_with('0');
  if (leadingZero ? digitRun(text) != 1 : digitRun(text) == 0) return false;
  takeDigits(text);
  if (takeOneOf(text, ".") && !takeDigits(text)) return false;
  if (takeOneOf(text, "eE")) {
    takeOneOf(text, "+-");
    if (!takeDigits(text)) return false;
  }
  return text.empty();
}

// The on-demand reader checks a value only when it is read; this walk reads every one.
class Decoder {
 public:
  Decoder(int depth, std::size_t values) : depthLeft_(depth), valuesLeft_(values) {}

  // The value, or nothing after a fault, which `fault` tells.
  std::optional<Value> decode(ondemand::value value);

  const JsonResult& fault() const { return fault_; }
  std::nullopt_t fail(std::string reason, JsonResult::State state = JsonResult::State::notJson) {
    fault_ = {state, Value(), std::move(reason)};
    return std::nullopt;
  }
  std::nullopt_t fail(simdjson::error_code error) { return fail(simdjson::error_message(error)); }

 private:
  std::optional<Value> object(ondemand::value value);
  std::optional<Value> array(ondemand::value value);
  std::optional<Value> string(ondemand::value value);
  std::optional<Value> number(ondemand::value value);
  std::optional<Value> boolean(ondemand::value value);
  std::optional<Value> null(ondemand::value value);

  // Of all open objects, the outer ones first.
  std::vector<Dictionary::Entry> entries_;
  int depthLeft_;
  std::size_t valuesLeft_;
  JsonResult fault_;
};

std::optional<Value> Decoder::decode(ondemand::value value) {
  if (valuesLeft_-- == 0) return fail("it holds too many values", JsonResult::State::tooLarge);
  ondemand::json_type type{};
  if (const auto error = value.type().get(type)) return fail(error);
  switch (type) {
    case ondemand::json_type::object:
      return object(value);
    case ondemand::json_type::array:
      return array(value);
    case ondemand::json_type::string:
      return string(value);
    case ondemand::json_type::number:
      return number(value);
    case ondemand::json_type::boolean:
      return boolean(value);
    case ondemand::json_type::null:
      return null(value);
  }
  return fail("it holds a value of no known type");
}

std::optional<Value> Decoder::object(ondemand::value value) {
  if (depthLeft_-- == 0) return fail("it is nested too deep");
  ondemand::object fields;
  if (const auto error = value.get_object().get(fields)) return fail(error);
  const std::size_t first = entries_.size();
  for (auto field : fields) {
    std::string_view key;
    if (const auto error = field.unescaped_key().get(key)) return fail(error);
    std::string ownKey(key);
    ondemand::value content;
    if (const auto error = field.value().get(content)) return fail(error);
    auto decoded = decode(content);
    if (!decoded) return std::nullopt;
    entries_.emplace_back(std::move(ownKey), *std::move(decoded));
  }
  ++depthLeft_;
  Value result(Dictionary::fromEntries(std::span(entries_).subspan(first)));
  entries_.resize(first);
  return result;
}

std::optional<Value> Decoder::array(ondemand::value value) {
  if (depthLeft_-- == 0) return fail("it is nested too deep");
  ondemand::array elements;
  if (const auto error = value.get_array().get(elements)) return fail(error);
  Array array;
  for (auto element : elements) {
    ondemand::value content;
    if (const auto error = element.get(content)) return fail(error);
    auto decoded = decode(content);
    if (!decoded) return std::nullopt;
    array.push_back(*std::move(decoded));
  }
  ++depthLeft_;
  return Value(std::move(array));
}

std::optional<Value> Decoder::string(ondemand::value value) {
  std::string_view text;
  if (const auto error = value.get_string().get(text)) return fail(error);
  return Value(text);
}

std::optional<Value> Decoder::number(ondemand::value value) {
  std::string_view text = value.raw_json_token();
  text = text.substr(0, text.find_last_not_of(kSpace) + 1);
  ondemand::number number;
  if (const auto error = value.get_number().get(number)) {
    // Refused for its form, or only because it is too large for the types at hand.
    if (!isJsonNumber(text)) return fail(error);
    return Value(parseDouble(text).value_or(0.0));
  }
  if (number.is_int64()) return Value(number.get_int64());
  if (number.is_uint64()) return Value(number.get_uint64());
  if (text.size() > kExactReal) return Value(parseDouble(text).value_or(0.0));
  return Value(number.get_double());
}

std::optional<Value> Decoder::boolean(ondemand::value value) {
  bool flag = false;
  if (const auto error = value.get_bool().get(flag)) return fail(error);
  return Value(flag ? 1 : 0);
}

std::optional<Value> Decoder::null(ondemand::value value) {
  bool isNull = false;
  if (const auto error = value.is_null().get(isNull)) return fail(error);
  if (!isNull) return fail("it holds a word that is no value");
  return Value();
}

// The text as the one element of a list, which reads scalars, objects and lists at the root alike
// and leaves no room for anything after them.
std::optional<Value> decodeElement(ondemand::document& document, Decoder& decoder) {
  ondemand::array list;
  if (const auto error = document.get_array().get(list)) return decoder.fail(error);
  std::optional<Value> root;
  for (auto element : list) {
    ondemand::value content;
    if (const auto error = element.get(content)) return decoder.fail(error);
    if (root) return decoder.fail("something follows its value");
    root = decoder.decode(content);
    if (!root) return std::nullopt;
  }
  if (document.current_location().error() != simdjson::OUT_OF_BOUNDS) {
    return decoder.fail("something follows its value");
  }
  return root ? root : decoder.fail("it is empty");
}

}  // namespace

std::string_view withoutByteOrderMark(std::string_view text) noexcept {
  return text.starts_with(kByteOrderMark) ? text.substr(kByteOrderMark.size()) : text;
}

JsonResult decodeJson(std::string_view text, int depth, std::size_t values) {
  text = withoutByteOrderMark(text);
  std::string list;
  list.reserve(text.size() + 2 + simdjson::SIMDJSON_PADDING);
  list.append("[").append(text).append("]");

  ondemand::parser parser;
  ondemand::document document;
  Decoder decoder(depth, values);
  if (const auto error = parser.iterate(list).get(document)) {
    decoder.fail(error);
    return decoder.fault();
  }
  auto root = decodeElement(document, decoder);
  if (!root) return decoder.fault();
  return {JsonResult::State::value, *std::move(root), {}};
}

}  // namespace fexora
