#include "fexora/platform/plist/LaidOutPlistReader.h"

#include <string>
#include <utility>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/plist/CutOff.h"
#include "fexora/platform/plist/LaidOutRecords.h"
#include "fexora/platform/plist/PlistText.h"
#include "fexora/platform/plist/XmlPlistWriter.h"
#include "fexora/platform/text/NumberText.h"
#include "fexora/platform/text/TakeLiteral.h"

namespace fexora {

template <std::size_t Size>
bool LaidOutPlistReader::take(const char (&expected)[Size]) noexcept {
  return takeLiteral(rest_, expected);
}

bool LaidOutPlistReader::takeTabs(std::size_t count) noexcept {
  const std::size_t tabs = rest_.find_first_not_of('\t');
  if (tabs != count) return false;
  rest_.remove_prefix(count);
  return true;
}

template <std::size_t Size>
std::optional<std::string_view> LaidOutPlistReader::takeText(const char (&closing)[Size]) noexcept {
  const std::string_view text = rest_.substr(0, rest_.find('<'));
  rest_.remove_prefix(text.size());
  if (!take(closing)) return std::nullopt;
  return text;
}

bool LaidOutPlistReader::readFile(Value& out) {
  return fexora::takeText(rest_, kXmlPlistHead) && readValue(0, out) && rest_ == kXmlPlistTail;
}

bool LaidOutPlistReader::readRootEntry(Dictionary::Entry& out) {
  return readEntry(1, out);
}

// A value's line or lines, from its tabs on; `depth` containers are open around it.
bool LaidOutPlistReader::readValue(std::size_t depth, Value& out) {
  if (++objects_ > limits::kPropertyListObjects || !takeTabs(depth)) return false;
  if (take("<string>")) return readString(out);
  if (take("<real>")) return readReal(out);
  if (take("<dict")) return readDictionary(depth + 1, out);
  if (take("<array")) return readArray(depth + 1, out);
  if (take("<integer>")) return readInteger(out);
  if (take("<date>")) return readDate(out);
  const bool isTrue = take("<true/>\n");
  out = isTrue;
  return isTrue || take("<false/>\n");
}

bool LaidOutPlistReader::readString(Value& out) {
  const auto text = takeText("</string>\n");
  if (!text || !isUnescapedPlistText(*text)) return false;
  out = Value(*text);
  return true;
}

bool LaidOutPlistReader::readReal(Value& out) {
  const auto text = takeText("</real>\n");
  const auto value = text ? parseDouble(*text) : std::nullopt;
  if (value) out = *value;
  return value.has_value();
}

bool LaidOutPlistReader::readInteger(Value& out) {
  const auto text = takeText("</integer>\n");
  const auto value = text ? parseInteger(*text) : std::nullopt;
  if (value) out = *value;
  return value.has_value();
}

bool LaidOutPlistReader::readDate(Value& out) {
  const auto text = takeText("</date>\n");
  const auto date = text ? Date::fromIsoText(*text) : std::nullopt;
  if (date) out = *date;
  return date.has_value();
}

// From the end of the element's name on, with `depth` containers open, this one included.
bool LaidOutPlistReader::readArray(std::size_t depth, Value& out) {
  if (depth > static_cast<std::size_t>(limits::kPropertyListDepth)) return false;
  if (take("/>\n")) {
    out = Array();
    return true;
  }
  if (!take(">\n")) return false;
  if (readRecords(depth, out)) return takeTabs(depth - 1) && take("</array>\n");
  const std::size_t first = items_.size();
  // The closing element has one tab less than the items.
  while (rest_.find_first_not_of('\t') == depth) {
    Value item;
    if (!readValue(depth, item)) return false;
    items_.push_back(std::move(item));
  }
  out = cutOff(items_, first);
  return takeTabs(depth - 1) && take("</array>\n");
}

// The elements of an array that are left where they are.
bool LaidOutPlistReader::readRecords(std::size_t depth, Value& out) {
  if (owner_ == nullptr || depth >= static_cast<std::size_t>(limits::kPropertyListDepth)) {
    return false;
  }
  const auto at = static_cast<std::size_t>(rest_.data() - owner_->data());
  auto list = LaidOutRecords::readAt(owner_, at, depth);
  if (list == nullptr) return false;
  objects_ += list->objects();
  if (objects_ > limits::kPropertyListObjects) return false;
  rest_.remove_prefix(list->length());
  out = Value(std::shared_ptr<const DeferredList>(std::move(list)));
  return true;
}

bool LaidOutPlistReader::readDictionary(std::size_t depth, Value& out) {
  if (depth > static_cast<std::size_t>(limits::kPropertyListDepth)) return false;
  if (take("/>\n")) {
    out = Dictionary();
    return true;
  }
  if (!take(">\n")) return false;
  const std::size_t first = entries_.size();
  while (rest_.find_first_not_of('\t') == depth) {
    Dictionary::Entry entry;
    if (!readEntry(depth, entry)) return false;
    entries_.push_back(std::move(entry));
  }
  out = cutOffDictionary(entries_, first);
  return takeTabs(depth - 1) && take("</dict>\n");
}

bool LaidOutPlistReader::readEntry(std::size_t depth, Dictionary::Entry& out) {
  if (!takeTabs(depth) || !take("<key>")) return false;
  const auto key = takeText("</key>\n");
  if (!key || !isUnescapedPlistText(*key)) return false;
  out.first = *key;
  return readValue(depth, out.second);
}

}  // namespace fexora
