#include "programs/sources/TableMaker.h"

#include "fexora/history/TableText.h"
#include "fexora/platform/text/AsciiCase.h"

#include "programs/sources/Source.h"

namespace fexora::sources {
namespace {

constexpr std::size_t kShown = 40;

}  // namespace

void TableMaker::reject(std::size_t line, std::string_view code, const std::string& what) const {
  std::string message = name_ + ", line " + std::to_string(line);
  if (!code.empty()) message.append(", ").append(code.substr(0, kShown));
  throw SourceProblem{message + ": " + what};
}

void TableMaker::setSource(std::string_view source, std::string_view base) {
  table_.source = source;
  table_.base = ascii::uppercased(base);
}

void TableMaker::begin(std::size_t line, std::string_view day) {
  end();
  const auto date = dayFromIsoText(day);
  if (!date) reject(line, {}, "\"" + std::string(day.substr(0, kShown)) + "\" is no date");
  table_.day = *date;
  isOpen_ = true;
}

void TableMaker::add(std::size_t line, std::string_view code, std::string_view figure) {
  if (!isOpen_) reject(line, code, "its figure comes before a day");
  if (!isTableCode(code)) {
    ++reading_.passedOver;
    return;
  }
  if (!isFigure(figure)) {
    reject(line, code,
           "\"" + std::string(figure.substr(0, kShown)) + "\" is no finite and positive figure");
  }
  table_.figures.emplace_back(ascii::uppercased(code), figure);
}

void TableMaker::end() {
  if (isOpen_ && !table_.figures.empty()) take_(table_);
  table_.figures.clear();
  isOpen_ = false;
}

}  // namespace fexora::sources
