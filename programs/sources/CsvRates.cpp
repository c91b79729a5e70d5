#include <optional>
#include <string>

#include "fexora/platform/text/AsciiCase.h"

#include "programs/sources/Source.h"

namespace fexora::sources {
namespace {

constexpr std::string_view kSpace = " \t\r";

std::string_view trimmed(std::string_view text) {
  const auto begin = text.find_first_not_of(kSpace);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(kSpace) + 1 - begin);
}

// What spreadsheets part the columns with: where it is no comma, a comma is the decimal mark.
char separatorOf(std::string_view line) {
  for (const char separator : {';', '\t'}) {
    if (line.find(separator) != std::string_view::npos) return separator;
  }
  return ',';
}

struct Row {
  std::string_view code;
  std::string figure;
};

std::string_view unquoted(std::string_view field) {
  const bool isQuoted = field.size() > 1 && field.front() == '"' && field.back() == '"';
  return isQuoted ? trimmed(field.substr(1, field.size() - 2)) : field;
}

// Nothing where there is no separator.
std::optional<Row> rowOf(std::string_view text, char separator) {
  const auto end = text.find(separator);
  if (end == std::string_view::npos) return std::nullopt;
  const std::string_view figure = trimmed(text.substr(end + 1));
  Row row{unquoted(trimmed(text.substr(0, end))), std::string(unquoted(figure))};
  const bool mayBeDecimal = separator != ',' || row.figure != figure;
  const auto comma = row.figure.find(',');
  if (mayBeDecimal && comma != std::string::npos && row.figure.find('.') == std::string::npos) {
    row.figure[comma] = '.';
  }
  return row;
}

}  // namespace

Source readCsv(const std::string& name, const std::string& text, Date undated) {
  RateCollector rates(name, undated);
  std::string_view rest = text;
  std::optional<char> separator;
  for (std::size_t line = 1; !rest.empty(); ++line) {
    const auto end = rest.find('\n');
    const auto content = trimmed(rest.substr(0, end));
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    if (content.empty()) continue;
    if (!separator) separator = separatorOf(content);
    const auto row = rowOf(content, *separator);
    if (!row) rates.reject(line, {}, "it is not \"code,rate\"");
    if (line == 1 && ascii::lowercased(row->figure) == "rate") continue;
    rates.add(line, row->code, rates.number(line, row->code, row->figure), row->figure);
  }
  return std::move(rates).finish();
}

}  // namespace fexora::sources
