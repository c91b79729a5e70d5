#include "fexora/platform/plist/LaidOutPlistReader.h"

#include <string>
#include <utility>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/plist/CutOff.h"
#include "fexora/platform/plist/PlistText.h"
#include "fexora/platform/plist/XmlPlistWriter.h"
#include "fexora/platform/text/NumberText.h"

namespace fexora {
namespace {

// Whether the text stands in XML as it is, and is allowed there.
bool isPlain(std::string_view text) noexcept {
  return text.find_first_of("&>\r") == std::string_view::npos && isPlistText(text);
}

}  // namespace

bool LaidOutPlistReader::take(std::string_view expected) noexcept {
  if (!rest_.starts_with(expected)) return false;
  rest_.remove_prefix(expected.size());
  return true;
}

bool LaidOutPlistReader::takeTabs(std::size_t count) noexcept {
  const std::size_t tabs = rest_.find_first_not_of('\t');
  if (tabs != count) return false;
  rest_.remove_prefix(count);
  return true;
}

std::optional<std::string_view> LaidOutPlistReader::takeText(std::string_view closing) noexcept {
  const std::string_view text = rest_.substr(0, rest_.find('<'));
  rest_.remove_prefix(text.size());
  if (!take(closing)) return std::nullopt;
  return text;
}

bool LaidOutPlistReader::readFile(Value& out) {
  return take(kXmlPlistHead) && readValue(0, out) && rest_ == kXmlPlistTail;
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
  if (!text || !isPlain(*text)) return false;
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
  if (!key || !isPlain(*key)) return false;
  out.first = *key;
  return readValue(depth, out.second);
}

}  // namespace fexora
