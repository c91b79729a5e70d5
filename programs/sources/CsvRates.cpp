#include <string>
#include <utility>

#include "fexora/platform/text/AsciiCase.h"

#include "programs/sources/Source.h"
#include "programs/sources/SourceText.h"

namespace fexora::sources {
namespace {

constexpr std::string_view kSpace = " \t\r";

std::string_view trimmed(std::string_view text) {
  const auto begin = text.find_first_not_of(kSpace);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(kSpace) + 1 - begin);
}

std::string_view unquoted(std::string_view field) {
  const bool isQuoted = field.size() > 1 && field.front() == '"' && field.back() == '"';
  return isQuoted ? trimmed(field.substr(1, field.size() - 2)) : field;
}

// Whether the figure's one mark may stand between thousands as well: "1,234".
bool mayBeThousands(std::string_view figure) {
  constexpr std::size_t kGroup = 3;
  const auto mark = figure.find_first_of(",.");
  return mark != std::string_view::npos && mark > 0 && mark <= kGroup && figure.front() != '0' &&
         figure.size() == mark + 1 + kGroup;
}

class CsvReader {
 public:
  CsvReader(const std::string& name, Date undated) : rates_(name, undated) {}

  void takeLine(std::size_t line, std::string_view text) {
    const bool isFirst = separator_ == '\0';
    // What spreadsheets part the columns with.
    if (isFirst) {
      const auto at = text.find_first_of(",;\t");
      separator_ = at != std::string_view::npos ? text[at] : ',';
    }
    const auto end = text.find(separator_);
    if (end == std::string_view::npos) rates_.reject(line, {}, "it is not \"code,rate\"");
    const std::string_view code = unquoted(trimmed(text.substr(0, end)));
    const std::string_view field = trimmed(text.substr(end + 1));
    const std::string_view figure = unquoted(field);
    if (isFirst && isHeader(code, figure)) return;
    const bool mayBeDecimal = separator_ != ',' || figure.size() != field.size();
    add(line, code, std::string(figure), mayBeDecimal);
  }
  Source finish() && { return std::move(rates_).finish(); }

 private:
  static bool isHeader(std::string_view code, std::string_view figure) {
    const std::string first = ascii::lowercased(code);
    return (first == "code" || first == "currency") && ascii::lowercased(figure) == "rate";
  }

  // A comma may be the decimal mark, of all figures or of none, where it parts no columns.
  void add(std::size_t line, std::string_view code, std::string figure, bool mayBeDecimal) {
    const auto mark = figure.find_first_of(",.");
    if (mayBeDecimal && mark != std::string::npos) {
      const bool isOther = mark_ != '\0' && mark_ != figure[mark];
      const bool isOpen = mark_ == '\0' && figure[mark] == ',' && mayBeThousands(figure);
      if (isOther || isOpen) {
        rates_.reject(line, code,
                      "\"" + figure.substr(0, kShownBytes) +
                          "\" may be read in two ways; write a decimal point");
      }
      mark_ = figure[mark];
      figure[mark] = '.';
    }
    rates_.add(line, code, rates_.number(line, code, figure), figure);
  }

  RateCollector rates_;
  char separator_ = '\0';  // none yet
  char mark_ = '\0';
};

}  // namespace

Source readCsv(const std::string& name, const std::string& text, Date undated) {
  CsvReader reader(name, undated);
  std::string_view rest = text;
  for (std::size_t line = 1; !rest.empty(); ++line) {
    const auto end = rest.find('\n');
    const auto content = trimmed(rest.substr(0, end));
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    if (!content.empty()) reader.takeLine(line, content);
  }
  return std::move(reader).finish();
}

}  // namespace fexora::sources
