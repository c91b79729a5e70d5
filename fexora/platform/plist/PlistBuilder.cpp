#include "fexora/platform/plist/PlistBuilder.h"

#include <charconv>
#include <optional>
#include <system_error>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/plist/Base64.h"
#include "fexora/platform/plist/CutOff.h"
#include "fexora/platform/plist/PlistText.h"
#include "fexora/platform/text/NumberText.h"

namespace fexora {
namespace {

std::optional<std::uint64_t> parseUnsigned(std::string_view digits, int base) {
  std::uint64_t value = 0;
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, value, base);
  if (digits.empty() || stop != end || error != std::errc()) return std::nullopt;
  return value;
}

}  // namespace

PlistBuilder::Tag PlistBuilder::tagOf(std::string_view name) noexcept {
  static constexpr std::pair<std::string_view, Tag> kTags[] = {
      {"key", Tag::key},    {"string", Tag::string},   {"real", Tag::real},
      {"dict", Tag::dict},  {"integer", Tag::integer}, {"array", Tag::array},
      {"true", Tag::truth}, {"false", Tag::falsehood}, {"date", Tag::date},
      {"data", Tag::data},  {"plist", Tag::plist}};
  for (const auto& [text, tag] : kTags) {
    if (text == name) return tag;
  }
  return Tag::none;
}

bool PlistBuilder::reject(std::string why) {
  error_ = std::move(why);
  return false;
}

bool PlistBuilder::begin(std::string_view name) {
  const Tag tag = tagOf(name);
  if (tag == Tag::none) return reject("unknown element <" + printableName(name) + ">");
  if (leaf_ != Tag::none) return reject("element <" + printableName(name) + "> inside a text");
  if (frames_.empty() != (tag == Tag::plist)) return reject("the root is not one <plist>");
  if (tag == Tag::plist || tag == Tag::dict || tag == Tag::array) return beginContainer(tag);
  return beginLeaf(tag);
}

bool PlistBuilder::beginLeaf(Tag tag) {
  if (tag == Tag::key) {
    if (frames_.back().tag != Tag::dict) return reject("a key outside a dictionary");
    if (frames_.back().keyPending) return reject("a key without a value");
  } else if (!admitsValue()) {
    return false;
  }
  leaf_ = tag;
  text_.clear();
  return true;
}

bool PlistBuilder::beginContainer(Tag tag) {
  if (tag != Tag::plist && !admitsValue()) return false;
  // The <plist> around the root is no level of its own.
  if (frames_.size() > static_cast<std::size_t>(limits::kPropertyListDepth)) {
    return reject("nested too deeply");
  }
  frames_.push_back({tag, false, tag == Tag::dict ? entries_.size() : items_.size()});
  return true;
}

bool PlistBuilder::admitsValue() {
  const Frame& frame = frames_.back();
  if (frame.tag == Tag::dict && !frame.keyPending) return reject("a value without a key");
  if (frame.tag == Tag::plist && !items_.empty()) return reject("more than one root value");
  if (++objects_ > limits::kPropertyListObjects) return reject("too many objects");
  return true;
}

bool PlistBuilder::text(std::string_view run) {
  if (leaf_ != Tag::none) {
    text_ += run;
    return true;
  }
  return isSpace(run) || reject("text outside the elements that hold it");
}

bool PlistBuilder::end() {
  return leaf_ != Tag::none ? endLeaf() : endContainer();
}

bool PlistBuilder::endLeaf() {
  switch (std::exchange(leaf_, Tag::none)) {
    case Tag::key:
      return endKey();
    case Tag::string:
      return add(std::string_view(text_));
    case Tag::integer:
      return addInteger();
    case Tag::real:
      return addReal();
    case Tag::date:
      return addDate();
    case Tag::data:
      return addData();
    case Tag::truth:
      return addBoolean(true);
    default:
      return addBoolean(false);
  }
}

bool PlistBuilder::endKey() {
  frames_.back().keyPending = true;
  entries_.emplace_back(std::string(text_), Value());
  return true;
}

bool PlistBuilder::addInteger() {
  std::string_view digits = trimmedOfSpace(text_);
  if (const auto value = parseInteger(digits)) return add(*value);
  const bool hexadecimal = digits.starts_with("0x") || digits.starts_with("0X");
  if (hexadecimal) {
    digits.remove_prefix(2);
  } else if (digits.starts_with('+')) {
    digits.remove_prefix(1);
  }
  if (const auto value = parseUnsigned(digits, hexadecimal ? 16 : 10)) return add(*value);
  return reject("no integer: " + printableName(text_));
}

bool PlistBuilder::addBoolean(bool value) {
  return isSpace(text_) ? add(value) : reject("text in a boolean");
}

bool PlistBuilder::addReal() {
  const auto value = parseDouble(trimmedOfSpace(text_));
  return value ? add(*value) : reject("no real number: " + printableName(text_));
}

bool PlistBuilder::addDate() {
  const auto value = Date::fromIsoText(trimmedOfSpace(text_));
  return value ? add(*value) : reject("no date: " + printableName(text_));
}

bool PlistBuilder::addData() {
  auto value = parseBase64(text_);
  return value ? add(std::move(*value)) : reject("data that is no base64");
}

bool PlistBuilder::endContainer() {
  const Frame frame = frames_.back();
  frames_.pop_back();
  if (frame.tag == Tag::array) return add(cutOff(items_, frame.first));
  if (frame.tag == Tag::dict) {
    if (frame.keyPending) return reject("a key without a value");
    return add(cutOffDictionary(entries_, frame.first));
  }
  if (items_.empty()) return reject("no root value");
  root_ = std::move(items_.front());
  return true;
}

bool PlistBuilder::add(Value value) {
  Frame& frame = frames_.back();
  if (frame.tag != Tag::dict) {
    items_.push_back(std::move(value));
    return true;
  }
  entries_.back().second = std::move(value);
  frame.keyPending = false;
  return true;
}

}  // namespace fexora
