#include "fexora/platform/plist/LaidOutRecords.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "fexora/platform/plist/PlistText.h"
#include "fexora/platform/text/NumberText.h"
#include "fexora/platform/text/TakeLiteral.h"

namespace fexora {
namespace {

bool takeOpening(std::string_view& rest, LaidOutRecords::Form form) noexcept {
  if (form == LaidOutRecords::Form::string) return takeLiteral(rest, "<string>");
  return form == LaidOutRecords::Form::real ? takeLiteral(rest, "<real>")
                                            : takeLiteral(rest, "<integer>");
}

bool takeClosing(std::string_view& rest, LaidOutRecords::Form form) noexcept {
  if (form == LaidOutRecords::Form::string) return takeLiteral(rest, "</string>\n");
  return form == LaidOutRecords::Form::real ? takeLiteral(rest, "</real>\n")
                                            : takeLiteral(rest, "</integer>\n");
}

std::size_t openingLength(LaidOutRecords::Form form) noexcept {
  if (form == LaidOutRecords::Form::string) return std::string_view("<string>").size();
  return std::string_view(form == LaidOutRecords::Form::real ? "<real>" : "<integer>").size();
}

std::size_t closingLength(LaidOutRecords::Form form) noexcept {
  return openingLength(form) + std::string_view("/\n").size();
}

bool isFigure(char c) noexcept {
  return c >= '0' && c <= '9';
}

// Whether all eight are figures: they alone are '0' to '?' as they are and with six added.
bool areFigures(const char* eight) noexcept {
  std::uint64_t word = 0;
  std::memcpy(&word, eight, sizeof word);
  constexpr std::uint64_t kHigh = 0xF0F0F0F0F0F0F0F0;
  constexpr std::uint64_t kFigures = 0x3030303030303030;
  constexpr std::uint64_t kSix = 0x0606060606060606;
  return (word & kHigh) == kFigures && ((word + kSix) & kHigh) == kFigures;
}

const char* endOfFigures(const char* from, const char* end) noexcept {
  while (end - from >= 8 && areFigures(from)) from += 8;
  while (from != end && isFigure(*from)) ++from;
  return from;
}

// The end of a number as nearly all are written, digits with at most one point between them: no
// reader refuses it, nor so few digits for an integer. What it does not take in is judged.
const char* endOfPlainNumber(const char* start, const char* end, bool mayHavePoint) noexcept {
  constexpr std::ptrdiff_t kMost = 18;
  const char* const first = start != end && *start == '-' ? start + 1 : start;
  const char* const whole = endOfFigures(first, end);
  if (whole == first || whole - first > kMost) return start;
  if (!mayHavePoint || whole == end || *whole != '.') return whole;
  const char* const part = endOfFigures(whole + 1, end);
  return part != whole + 1 ? part : whole;
}

bool isReadable(LaidOutRecords::Form form, std::string_view text) {
  if (form == LaidOutRecords::Form::string) return isUnescapedPlistText(text);
  return form == LaidOutRecords::Form::real ? parseDouble(text).has_value()
                                            : parseInteger(text).has_value();
}

// The form of the element at the head of `rest`, if it is one, by the letter behind the bracket.
LaidOutRecords::Form formAt(std::string_view rest) noexcept {
  const char letter = rest.size() > 1 ? rest[1] : '\0';
  if (letter == 's') return LaidOutRecords::Form::string;
  return letter == 'r' ? LaidOutRecords::Form::real : LaidOutRecords::Form::integer;
}

std::string_view takeToTag(std::string_view& rest) noexcept {
  const std::string_view text = rest.substr(0, rest.find('<'));
  rest.remove_prefix(text.size());
  return text;
}

// A value's element, whose text any reader would read.
bool takeValue(std::string_view& rest) {
  const LaidOutRecords::Form form = formAt(rest);
  if (!takeOpening(rest, form)) return false;
  const char* const end = rest.data() + rest.size();
  const bool isText = form == LaidOutRecords::Form::string;
  const char* const plain =
      isText ? rest.data() + plainLength(rest)
             : endOfPlainNumber(rest.data(), end, form == LaidOutRecords::Form::real);
  const bool isPlain = plain != end && *plain == '<' && (isText || plain != rest.data());
  if (isPlain) {
    rest.remove_prefix(static_cast<std::size_t>(plain - rest.data()));
  } else if (!isReadable(form, takeToTag(rest))) {
    return false;
  }
  return takeClosing(rest, form);
}

bool takeTabs(std::string_view& rest, std::size_t count) noexcept {
  if (std::min(rest.find_first_not_of('\t'), rest.size()) != count) return false;
  rest.remove_prefix(count);
  return true;
}

}  // namespace

std::shared_ptr<const LaidOutRecords> LaidOutRecords::readAt(
    std::shared_ptr<const std::string> bytes, std::size_t at, std::size_t depth) {
  std::shared_ptr<LaidOutRecords> list(new LaidOutRecords(std::move(bytes), at, depth));
  const std::string_view all = std::string_view(*list->bytes_).substr(at);
  if (!list->readShape(all)) return nullptr;
  std::string_view rest = all;
  while (list->take(rest)) ++list->size_;
  // What does not end the list there is a record of another kind.
  if (list->size_ < kFewestRecords || rest.find_first_not_of('\t') == depth) return nullptr;
  list->length_ = all.size() - rest.size();
  return list;
}

std::shared_ptr<const LaidOutRecords> LaidOutRecords::written(
    std::shared_ptr<const std::string> text, std::size_t depth, std::size_t size) {
  std::shared_ptr<LaidOutRecords> list(new LaidOutRecords(std::move(text), 0, depth));
  list->size_ = size;
  list->length_ = list->bytes_->size();
  return size >= kFewestRecords && list->readShape(list->lines()) ? list : nullptr;
}

// The lines of the first record, less its values.
bool LaidOutRecords::readShape(std::string_view rest) {
  const char* from = rest.data();
  if (!takeTabs(rest, depth_) || !takeLiteral(rest, "<dict>\n")) return false;
  while (takeTabs(rest, depth_ + 1)) {
    if (keys_.size() == kMostFields || !takeLiteral(rest, "<key>")) return false;
    keys_.push_back(takeToTag(rest));
    if (!isUnescapedPlistText(keys_.back())) return false;
    if (!takeLiteral(rest, "</key>\n") || !takeTabs(rest, depth_ + 1)) return false;
    before_.emplace_back(from, static_cast<std::size_t>(rest.data() - from));
    if (!takeValue(rest)) return false;
    from = rest.data();
  }
  if (keys_.empty() || !takeTabs(rest, depth_) || !takeLiteral(rest, "</dict>\n")) return false;
  closing_ = {from, static_cast<std::size_t>(rest.data() - from)};
  return true;
}

// One record, with all that makes it one; `rest` stays when there is none.
bool LaidOutRecords::take(std::string_view& rest) const {
  std::string_view left = rest;
  for (const std::string_view before : before_) {
    if (!takeText(left, before) || !takeValue(left)) return false;
  }
  if (!takeText(left, closing_)) return false;
  rest = left;
  return true;
}

// One that was looked through before.
void LaidOutRecords::takeRead(std::string_view& rest, Record& record) const noexcept {
  for (std::size_t i = 0; i < before_.size(); ++i) {
    rest.remove_prefix(before_[i].size());
    Field& field = record.fields_[i];
    field.form = formAt(rest);
    rest.remove_prefix(openingLength(field.form));
    field.text = takeToTag(rest);
    rest.remove_prefix(closingLength(field.form));
  }
  rest.remove_prefix(closing_.size());
}

Array LaidOutRecords::makeElements() const {
  Array elements;
  elements.reserve(size_);
  std::vector<Dictionary::Entry> entries;
  visit([&](const Record& record) {
    entries.clear();
    for (std::size_t i = 0; i < keys_.size(); ++i) {
      entries.emplace_back(keys_[i], record.fields_[i].value());
    }
    elements.emplace_back(Dictionary::fromEntries(entries));
  });
  return elements;
}

Value LaidOutRecords::Field::value() const {
  if (form == Form::string) return text;
  if (form == Form::real) return parseDouble(text).value_or(0);
  return parseInteger(text).value_or(0);
}

const LaidOutRecords::Field* LaidOutRecords::Record::find(std::string_view key) const noexcept {
  for (std::size_t i = 0; i < keys_->size(); ++i) {
    if ((*keys_)[i] == key) return &fields_[i];
  }
  return nullptr;
}

}  // namespace fexora
