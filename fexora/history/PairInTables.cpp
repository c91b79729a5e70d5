#include "fexora/history/PairInTables.h"

#include <algorithm>

#include "fexora/catalogue/CurrencyFacts.h"
#include "fexora/history/FigureQuotient.h"
#include "fexora/history/TableText.h"
#include "fexora/platform/text/NumberText.h"

namespace fexora {
namespace {

// A host's rows may lead in a circle.
constexpr std::size_t kMostSteps = 32;
constexpr std::string_view kOne = "1";

// The first day on which the ratio of `facts` surely held: of a month or a year that alone is
// known, the day after it.
std::optional<Day> heldSince(const CurrencyFacts& facts) {
  const std::string_view text = facts.ratioSince.empty() ? facts.replaced : facts.ratioSince;
  if (text.size() == 10) return dayFromIsoText(text);
  const std::string first = std::string(text) + (text.size() == 4 ? "-01-01" : "-01");
  const auto day = dayFromIsoText(first);
  if (!day) return std::nullopt;
  const std::chrono::year_month_day date(*day);
  if (text.size() == 4) return Day((date.year() + std::chrono::years(1)) / 1 / 1);
  return Day((date.year() / date.month() + std::chrono::months(1)) / 1);
}

}  // namespace

PairInTables::PairInTables(std::string_view from, std::string_view to)
    : from_(sideOf(from)), to_(sideOf(to)) {}

PairInTables::Side PairInTables::sideOf(std::string_view code) {
  Side side{std::string(code), {}};
  const CurrencyFacts* facts = currencyFacts(code);
  Day since{};
  while (facts != nullptr && facts->hasRatio() && side.steps.size() < kMostSteps) {
    const auto held = heldSince(*facts);
    if (!held) break;
    since = side.steps.empty() ? *held : std::max(since, *held);
    side.steps.push_back({std::string(facts->successor), since, shortestText(facts->units),
                          shortestText(facts->successorUnits)});
    facts = currencyFacts(facts->successor);
  }
  return side;
}

std::optional<PairInTables::Figure> PairInTables::figureIn(const TableView& table,
                                                           const Side& side) {
  const auto printed = [&table](const std::string& code, std::size_t steps) {
    const bool isBase = code == table.base;
    const std::string_view text = isBase ? kOne : figureOf(table.figures, code);
    return Figure{text, steps, isBase};
  };
  Figure figure = printed(side.code, 0);
  for (std::size_t i = 0; figure.text.empty() && i < side.steps.size(); ++i) {
    if (side.steps[i].since > table.day) break;
    figure = printed(side.steps[i].code, i + 1);
  }
  return figure.text.empty() ? std::nullopt : std::optional(figure);
}

void PairInTables::apply(const Side& side, const Figure& figure, bool isTop,
                         FigureQuotient& quotient) {
  const auto add = [&](std::string_view text, bool top) {
    if (top) {
      quotient.multiplyBy(text);
    } else {
      quotient.divideBy(text);
    }
  };
  add(figure.text, isTop);
  for (std::size_t i = 0; i < figure.steps; ++i) {
    add(side.steps[i].units, isTop);
    add(side.steps[i].successorUnits, !isTop);
  }
}

std::optional<PairInTables::Found> PairInTables::in(const TableView& table) const {
  if (from_.code == to_.code) return std::nullopt;
  const auto from = figureIn(table, from_);
  if (!from) return std::nullopt;
  const auto to = figureIn(table, to_);
  if (!to) return std::nullopt;
  const bool byLaw = from->steps + to->steps > 0;
  if (from->isBase && !byLaw) {
    return Found{parseDouble(to->text).value_or(0.0), PastRate::How::printed};
  }
  FigureQuotient quotient;
  apply(to_, *to, true, quotient);
  apply(from_, *from, false, quotient);
  const auto how = byLaw        ? PastRate::How::byLaw
                   : to->isBase ? PastRate::How::printed
                                : PastRate::How::crossed;
  return Found{quotient.value(), how};
}

}  // namespace fexora
