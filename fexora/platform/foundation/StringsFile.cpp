#include "fexora/platform/foundation/StringsFile.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "fexora/platform/foundation/Utf8.h"

namespace fexora {
namespace {

bool isBlank(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

bool isBare(char c) {
  constexpr std::string_view kMarks = "_./$:-";
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
         kMarks.find(c) != std::string_view::npos;
}

std::optional<unsigned> hexDigit(char c) {
  if (c >= '0' && c <= '9') return static_cast<unsigned>(c - '0');
  if (c >= 'A' && c <= 'F') return static_cast<unsigned>(c - 'A' + 10);
  if (c >= 'a' && c <= 'f') return static_cast<unsigned>(c - 'a' + 10);
  return std::nullopt;
}

// Reads entry after entry from UTF-8 text; every step gives false once an error is noted.
class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  StringTableResult read() {
    while (skipBlanks() && at_ < text_.size() && readEntry()) {
    }
    if (!error_.empty()) return {std::nullopt, error_};
    return {std::move(table_), {}};
  }

 private:
  bool fail(std::string_view what) {
    const auto line =
        std::count(text_.begin(), text_.begin() + static_cast<std::ptrdiff_t>(at_), '\n');
    error_ = "line " + std::to_string(line + 1) + ": " + std::string(what);
    return false;
  }

  bool looksAt(std::string_view sign) const { return text_.substr(at_).starts_with(sign); }

  bool take(std::string_view sign) {
    if (!looksAt(sign)) return false;
    at_ += sign.size();
    return true;
  }

  bool skipBlanks() {
    while (at_ < text_.size()) {
      if (isBlank(text_[at_])) {
        ++at_;
      } else if (looksAt("//")) {
        at_ = std::min(text_.find_first_of("\r\n", at_), text_.size());
      } else if (looksAt("/*")) {
        const auto end = text_.find("*/", at_ + 2);
        if (end == std::string_view::npos) return fail("a comment without its end");
        at_ = end + 2;
      } else {
        break;
      }
    }
    return true;
  }

  bool readEntry() {
    std::string key;
    if (!readString(key) || !skipBlanks()) return false;
    std::string value = key;
    if (take("=")) {
      value.clear();
      if (!skipBlanks() || !readString(value) || !skipBlanks()) return false;
    }
    if (!take(";")) return fail("';' expected");
    table_.insert_or_assign(std::move(key), std::move(value));
    return true;
  }

  bool readString(std::string& out) {
    if (take("\"")) return readQuoted('"', out);
    if (take("'")) return readQuoted('\'', out);
    while (at_ < text_.size() && isBare(text_[at_])) out += text_[at_++];
    return !out.empty() || fail("a string expected");
  }

  bool readQuoted(char quote, std::string& out) {
    while (at_ < text_.size()) {
      const char c = text_[at_++];
      if (c == quote) return true;
      if (c != '\\') {
        out += c;
      } else if (!readEscape(out)) {
        return false;
      }
    }
    return fail("a string without its end");
  }

  bool readEscape(std::string& out) {
    constexpr std::string_view kLetters = "abfnrtv";
    constexpr std::string_view kSigns = "\a\b\f\n\r\t\v";
    if (at_ == text_.size()) return fail("a string without its end");
    if (text_[at_] >= '0' && text_[at_] <= '7') return readOctal(out);
    const char c = text_[at_++];
    if (c == 'U' || c == 'u') return readUnicode(out);
    const auto letter = kLetters.find(c);
    out += letter != std::string_view::npos ? kSigns[letter] : c;
    return true;
  }

  bool readOctal(std::string& out) {
    char32_t value = 0;
    for (int i = 0; i < 3 && at_ < text_.size() && text_[at_] >= '0' && text_[at_] <= '7'; ++i) {
      value = value * 8 + static_cast<char32_t>(text_[at_++] - '0');
    }
    // Beyond ASCII the number would mean a place in a character set of long ago.
    if (value > 0x7F) return fail("an octal escape beyond ASCII");
    appendUtf8(out, value);
    return true;
  }

  bool readUnicode(std::string& out) {
    char32_t unit = 0;
    if (!readUnit(unit)) return false;
    if (unit >= 0xD800 && unit <= 0xDBFF && (take("\\U") || take("\\u"))) {
      char32_t low = 0;
      if (!readUnit(low)) return false;
      if (low < 0xDC00 || low > 0xDFFF) return fail("half of a surrogate pair");
      unit = 0x10000 + ((unit - 0xD800) << 10U) + (low - 0xDC00);
    }
    if (unit >= 0xD800 && unit <= 0xDFFF) return fail("half of a surrogate pair");
    appendUtf8(out, unit);
    return true;
  }

  bool readUnit(char32_t& unit) {
    for (int i = 0; i < 4; ++i) {
      const auto digit = at_ < text_.size() ? hexDigit(text_[at_]) : std::nullopt;
      if (!digit) return fail("four hex digits expected");
      unit = unit << 4U | *digit;
      ++at_;
    }
    return true;
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::string error_;
  StringTable table_;
};

}  // namespace

StringTableResult parseStringsFile(std::string_view bytes) {
  std::string converted;
  const bool little = bytes.starts_with("\xFF\xFE");
  const bool big = bytes.starts_with("\xFE\xFF");
  if (little || big) {
    if (!utf8FromUtf16(bytes.substr(2), big, converted)) {
      return {std::nullopt, "broken UTF-16"};
    }
    return Reader(converted).read();
  }
  if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
  if (!isUtf8(bytes)) return {std::nullopt, "neither UTF-8 nor UTF-16 with a byte-order mark"};
  return Reader(bytes).read();
}

bool StringsFile::load(const std::string& path, std::string& error) {
  const auto bytes = readStringsBytes(path, error);
  if (!bytes) return false;
  auto result = parseStringsFile(*bytes);
  if (!result.table) {
    error = path + ": " + result.error;
    return false;
  }
  setTable(*std::move(result.table));
  return true;
}

}  // namespace fexora
