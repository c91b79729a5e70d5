#include "programs/sources/Source.h"

namespace fexora::sources {
namespace {

constexpr std::string_view kSpace = " \t\r";

std::string_view trimmed(std::string_view text) {
  const auto begin = text.find_first_not_of(kSpace);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(kSpace) + 1 - begin);
}

void takeLine(RateCollector& rates, std::size_t line, std::string_view text) {
  const auto comma = text.find(',');
  if (comma == std::string_view::npos) rates.reject(line, {}, "it is not \"code,rate\"");
  const auto code = trimmed(text.substr(0, comma));
  const auto figure = trimmed(text.substr(comma + 1));
  rates.add(line, code, rates.number(line, code, figure), figure);
}

}  // namespace

Source readCsv(const std::string& name, const std::string& text, Date undated) {
  RateCollector rates(name, undated);
  std::string_view rest = text;
  for (std::size_t line = 1; !rest.empty(); ++line) {
    const auto end = rest.find('\n');
    const auto content = trimmed(rest.substr(0, end));
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    if (!content.empty() && !(line == 1 && content == "code,rate")) takeLine(rates, line, content);
  }
  return std::move(rates).finish();
}

}  // namespace fexora::sources
