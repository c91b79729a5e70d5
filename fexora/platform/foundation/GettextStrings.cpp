#include "fexora/platform/foundation/GettextStrings.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <filesystem>
#include <utility>

#include "fexora/platform/foundation/Limits.h"
#include "fexora/platform/foundation/Utf8.h"

namespace fexora {
namespace {

constexpr std::uint32_t kMagic = 0x950412DE;
constexpr char kContextEnd = '\4';

// One catalogue's bytes, read in its own byte order and never beyond the end.
class Catalogue {
 public:
  explicit Catalogue(std::string_view bytes) : bytes_(bytes) {
    if (bytes.size() < 20) return;
    valid_ = number(0) == kMagic;
    if (!valid_) {
      bigEndian_ = true;
      valid_ = number(0) == kMagic;
    }
  }

  bool valid() const { return valid_; }
  // The high half of the revision is the major one.
  bool known() const { return number(4) >> 16U <= 1; }
  std::uint64_t count() const { return number(8); }
  std::optional<std::string_view> original(std::uint64_t i) const { return text(number(12), i); }
  std::optional<std::string_view> translation(std::uint64_t i) const { return text(number(16), i); }
  bool holdsTables() const {
    return number(12) + 8 * count() <= bytes_.size() && number(16) + 8 * count() <= bytes_.size();
  }

 private:
  std::uint64_t number(std::uint64_t at) const {
    std::uint64_t value = 0;
    for (std::uint64_t i = 0; i < 4; ++i) {
      const auto byte = static_cast<unsigned char>(bytes_[at + (bigEndian_ ? i : 3 - i)]);
      value = value << 8U | byte;
    }
    return value;
  }

  std::optional<std::string_view> text(std::uint64_t table, std::uint64_t i) const {
    const std::uint64_t length = number(table + 8 * i);
    const std::uint64_t start = number(table + 8 * i + 4);
    if (start + length > bytes_.size()) return std::nullopt;
    // The forms of a plural are set apart by a NUL; the first is the singular.
    const std::string_view whole = bytes_.substr(start, length);
    return whole.substr(0, whole.find('\0'));
  }

  std::string_view bytes_;
  bool bigEndian_ = false;
  bool valid_ = false;
};

// Whether the header (the text of the empty message) names another character set than UTF-8.
bool namesOtherCharset(std::string_view header) {
  constexpr std::string_view kLabel = "charset=";
  const auto at = header.find(kLabel);
  if (at == std::string_view::npos) return false;
  std::string name(header.substr(at + kLabel.size()));
  name.erase(std::min(name.find_first_of(" \t\r\n;"), name.size()));
  for (char& c : name) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return name != "UTF-8" && name != "UTF8" && name != "US-ASCII" && name != "ASCII";
}

bool isSafeName(std::string_view name) {
  return !name.empty() && name.find('/') == std::string_view::npos && name.front() != '.';
}

}  // namespace

StringTableResult parseGettextCatalogue(std::string_view bytes) {
  const Catalogue catalogue(bytes);
  if (!catalogue.valid()) return {std::nullopt, "not a compiled gettext catalogue"};
  if (!catalogue.known()) return {std::nullopt, "a catalogue of an unknown revision"};
  if (!catalogue.holdsTables()) return {std::nullopt, "a cut-off catalogue"};
  StringTable table;
  std::size_t size = 0;
  for (std::uint64_t i = 0; i < catalogue.count(); ++i) {
    const auto key = catalogue.original(i);
    const auto text = catalogue.translation(i);
    if (!key || !text) return {std::nullopt, "a cut-off catalogue"};
    // All entries may name the same bytes of the file.
    size += key->size() + text->size();
    if (size > limits::kStringsFileBytes) return {std::nullopt, "too much text"};
    if (key->empty()) {
      if (namesOtherCharset(*text)) return {std::nullopt, "texts in another encoding than UTF-8"};
      continue;
    }
    if (!isUtf8(*key) || !isUtf8(*text)) return {std::nullopt, "texts that are not UTF-8"};
    const bool hasContext = key->find(kContextEnd) != std::string_view::npos;
    if (!hasContext && !text->empty()) table.emplace(*key, *text);
  }
  return {std::move(table), {}};
}

GettextStrings::GettextStrings(std::string folder, std::string domain)
    : folder_(std::move(folder)), domain_(std::move(domain)) {}

bool GettextStrings::setLanguage(std::string_view language, std::string& error) {
  error.clear();
  for (const std::string_view name : {language, language.substr(0, language.find('_'))}) {
    if (!isSafeName(name)) continue;
    std::string path = folder_;
    path.append("/").append(name).append("/LC_MESSAGES/").append(domain_).append(".mo");
    std::error_code none;
    if (!std::filesystem::exists(path, none)) continue;
    const auto bytes = readStringsBytes(path, error);
    auto result = bytes ? parseGettextCatalogue(*bytes) : StringTableResult{{}, {}};
    if (bytes && !result.table) error = path + ": " + result.error;
    const bool usable = result.table.has_value();
    setTable(std::move(result.table).value_or(StringTable()));
    return usable;
  }
  setTable({});
  return true;
}

}  // namespace fexora
