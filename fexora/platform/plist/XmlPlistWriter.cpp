#include "fexora/platform/plist/XmlPlistWriter.h"

#include <cmath>
#include <new>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/plist/Base64.h"
#include "fexora/platform/plist/LaidOutRecords.h"
#include "fexora/platform/plist/PlistText.h"
#include "fexora/platform/text/NumberText.h"

namespace fexora {
namespace {

constexpr std::size_t kWhereBytes = 200;

// A carriage return would be read back as a line feed if it stood by itself.
void appendEscaped(std::string& out, std::string_view text) {
  while (true) {
    const std::size_t plain = text.find_first_of("&<>\r");
    out += text.substr(0, plain);
    if (plain == std::string_view::npos) return;
    switch (text[plain]) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      default:
        out += "&#13;";
        break;
    }
    text.remove_prefix(plain + 1);
  }
}

}  // namespace

std::string XmlPlistWriter::error() const {
  return (where_.empty() ? "the root" : where_) + ": " + why_;
}

bool XmlPlistWriter::reject(std::string_view why) {
  why_ = why;
  return false;
}

// On the way back out: `where` is put before what stands further in.
bool XmlPlistWriter::rejectAt(std::string_view where) {
  const bool joined = !where_.empty() && !where_.starts_with('[');
  where_ = std::string(where).append(joined ? "." : "").append(where_);
  if (where_.size() > kWhereBytes) where_.replace(kWhereBytes, std::string::npos, "...");
  return false;
}

bool XmlPlistWriter::isReadable() {
  const std::size_t bytes = out_.size() + rest_.bytes;
  if (bytes <= limits::kStoreFileBytes) return true;
  return reject("a file of " + std::to_string(bytes) + " bytes or more, more than the " +
                std::to_string(limits::kStoreFileBytes) + " that are read back");
}

bool XmlPlistWriter::appendRoot(const Value& value) {
  return append(value, 0);
}

bool XmlPlistWriter::appendRootEntry(const Dictionary::Entry& entry) {
  return appendEntry(entry, 1);
}

// A value's element with its line's end; `depth` containers are open around it.
bool XmlPlistWriter::append(const Value& value, std::size_t depth) {
  if (++objects_ + rest_.objects > limits::kPropertyListObjects) return reject("too many objects");
  // Here, too: copies share their content in memory, but not in the text.
  if (!isReadable()) return false;
  out_.append(depth, '\t');
  switch (value.kind()) {
    case Value::Kind::null:
      return reject("a null value");
    case Value::Kind::number:
      return appendNumber(*value.number());
    case Value::Kind::string:
      return appendText("<string>", *value.string(), "</string>\n");
    case Value::Kind::date:
      return appendDate(*value.date());
    case Value::Kind::data:
      out_ += "<data>";
      appendBase64(out_, *value.data());
      out_ += "</data>\n";
      return true;
    case Value::Kind::array: {
      const auto* const records = dynamic_cast<const LaidOutRecords*>(value.deferred());
      if (records != nullptr && records->depth() == depth + 1) return appendRecords(*records);
      const Array* const elements = value.array();
      if (elements == nullptr) throw std::bad_alloc();
      return appendArray(*elements, depth + 1);
    }
    case Value::Kind::dictionary:
      return appendDictionary(*value.dictionary(), depth + 1);
  }
  return reject("a value of an unknown kind");
}

bool XmlPlistWriter::appendNumber(const NSNumber& number) {
  switch (number.kind()) {
    case NSNumber::Kind::boolean:
      out_ += number.boolValue() ? "<true/>\n" : "<false/>\n";
      break;
    case NSNumber::Kind::integer:
      out_ += "<integer>";
      appendIntegerText(out_, number.intValue());
      out_ += "</integer>\n";
      break;
    case NSNumber::Kind::real:
      exact_ = exact_ && !std::isnan(number.doubleValue());
      out_ += "<real>";
      appendShortestText(out_, number.doubleValue());
      out_ += "</real>\n";
      break;
  }
  return true;
}

bool XmlPlistWriter::appendText(std::string_view open, std::string_view text,
                                std::string_view close) {
  if (plainLength(text) == text.size()) {
    out_.append(open).append(text).append(close);
    return true;
  }
  if (!isPlistText(text)) return reject("text with control characters or broken UTF-8");
  out_ += open;
  appendEscaped(out_, text);
  out_ += close;
  return true;
}

bool XmlPlistWriter::appendDate(const Date& date) {
  const auto text = date.isoText();
  if (!text) return reject("a date outside the years 1 to 9999");
  const double seconds = date.secondsSince1970();
  exact_ = exact_ && seconds == std::floor(seconds);
  out_ += "<date>";
  out_ += *text;
  out_ += "</date>\n";
  return true;
}

bool XmlPlistWriter::appendArray(const Array& array, std::size_t depth) {
  if (depth > static_cast<std::size_t>(limits::kPropertyListDepth))
    return reject("nested too deeply");
  if (array.empty()) {
    out_ += "<array/>\n";
    return true;
  }
  out_ += "<array>\n";
  std::int64_t index = 0;
  for (const Value& item : array) {
    if (!append(item, depth))
      return rejectAt(std::string("[").append(integerText(index)).append("]"));
    ++index;
  }
  out_.append(depth - 1, '\t');
  out_ += "</array>\n";
  return true;
}

// As they stand: what was looked through there any reader reads.
bool XmlPlistWriter::appendRecords(const LaidOutRecords& records) {
  objects_ += records.objects();
  if (objects_ + rest_.objects > limits::kPropertyListObjects) return reject("too many objects");
  out_ += "<array>\n";
  out_ += records.lines();
  out_.append(records.depth() - 1, '\t');
  out_ += "</array>\n";
  return isReadable();
}

bool XmlPlistWriter::appendDictionary(const Dictionary& dictionary, std::size_t depth) {
  if (depth > static_cast<std::size_t>(limits::kPropertyListDepth))
    return reject("nested too deeply");
  if (dictionary.empty()) {
    out_ += "<dict/>\n";
    return true;
  }
  out_ += "<dict>\n";
  for (const Dictionary::Entry& entry : dictionary) {
    if (!appendEntry(entry, depth)) return false;
  }
  out_.append(depth - 1, '\t');
  out_ += "</dict>\n";
  return true;
}

bool XmlPlistWriter::appendEntry(const Dictionary::Entry& entry, std::size_t depth) {
  out_.append(depth, '\t');
  const bool done =
      appendText("<key>", entry.first, "</key>\n") && append(entry.second, depth) && isReadable();
  return done || rejectAt(printableName(entry.first));
}

}  // namespace fexora
