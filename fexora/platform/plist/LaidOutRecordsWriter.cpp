#include "fexora/platform/plist/LaidOutRecordsWriter.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

#include "fexora/platform/base/BringIn.h"
#include "fexora/platform/plist/PlistText.h"
#include "fexora/platform/text/NumberText.h"

namespace fexora {
namespace {

// Of a value's two tags and its line's end.
constexpr std::size_t kValueTags = std::string_view("<integer></integer>\n").size();

// Room is taken in such steps of the text's capacity.
constexpr std::size_t kStep = 4096;

constexpr std::size_t kUsualRecord = 256;  // in bytes

char* put(char* at, std::string_view text) noexcept {
  std::memcpy(at, text.data(), text.size());
  return at + text.size();
}

// Copied in place, without a call.
template <std::size_t Size>
char* put(char* at, const char (&literal)[Size]) noexcept {
  std::memcpy(at, literal, Size - 1);
  return at + Size - 1;
}

// Where the value's element ends, with its line; null for a value that such a list does not hold.
char* putValue(char* at, const Value& value) noexcept {
  if (const std::string* const text = value.string()) {
    if (plainLength(*text) != text->size()) return nullptr;
    return put(put(put(at, "<string>"), *text), "</string>\n");
  }
  const NSNumber* const number = value.number();
  if (number == nullptr) return nullptr;
  switch (number->kind()) {
    case NSNumber::Kind::real:
      if (!std::isfinite(number->doubleValue())) return nullptr;
      return put(writeShortestText(put(at, "<real>"), number->doubleValue()), "</real>\n");
    case NSNumber::Kind::integer:
      return put(writeIntegerText(put(at, "<integer>"), number->intValue()), "</integer>\n");
    default:
      return nullptr;
  }
}

}  // namespace

bool LaidOutRecordsWriter::add(std::span<const Dictionary::Entry> fields) {
  if (lines_.empty() && !begin(fields)) return false;
  if (fields.size() != lines_.size()) return false;
  const std::size_t most = mostOf(fields);
  if (text_.size() - size_ < most) text_.resize(size_ + most + kStep);
  char* at = text_.data() + size_;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (fields[i].first != lines_[i].key) return false;
    at = putValue(put(at, lines_[i].before), fields[i].second);
    if (at == nullptr) return false;
  }
  size_ = static_cast<std::size_t>(put(at, closing_) - text_.data());
  ++count_;
  return true;
}

bool LaidOutRecordsWriter::begin(std::span<const Dictionary::Entry> fields) {
  if (fields.empty() || fields.size() > LaidOutRecords::kMostFields) return false;
  const std::string tabs(depth_, '\t');
  std::string opening = tabs + "<dict>\n";
  for (const auto& [key, value] : fields) {
    if (plainLength(key) != key.size() || (!lines_.empty() && key <= lines_.back().key)) {
      return false;
    }
    std::string before = std::exchange(opening, {});
    before.append(tabs).append("\t<key>").append(key).append("</key>\n").append(tabs).append("\t");
    lines_.push_back({key, std::move(before)});
  }
  closing_ = tabs + "</dict>\n";
  // Where the first is long, the others need not be.
  const std::size_t most = records_ * std::min(mostOf(fields), kUsualRecord) + kStep;
  text_.reserve(most);
  bringIn(text_.data(), most);
  return true;
}

// The bytes that the record takes at most.
std::size_t LaidOutRecordsWriter::mostOf(std::span<const Dictionary::Entry> fields) const noexcept {
  std::size_t most = closing_.size();
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const std::string* const text = fields[i].second.string();
    most +=
        lines_[i].before.size() + kValueTags + (text != nullptr ? text->size() : kNumberTextBytes);
  }
  return most;
}

std::shared_ptr<const LaidOutRecords> LaidOutRecordsWriter::take() {
  text_.resize(size_);
  return LaidOutRecords::written(std::make_shared<const std::string>(std::move(text_)), depth_,
                                 count_);
}

}  // namespace fexora
