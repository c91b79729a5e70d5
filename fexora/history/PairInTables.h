// A pair of currencies, looked up in one published table after the other.
//
// Both sides come from the one table that is given: each by its printed figure (the base's own is
// 1), else by the ratios that law fixed between a withdrawn currency and those that took its place,
// as far as they held on the table's own day: the German mark has had a rate by the euro's since
// 1999-01-01. One thread at a time.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fexora/history/PastRate.h"

namespace fexora {

class FigureQuotient;

// The text that is kept of a table; see TableText.h.
struct TableView {
  Day day{};
  std::string_view base;
  std::string_view figures;
};

class FEXORA_API PairInTables {
 public:
  // May throw std::bad_alloc, as may the look-up.
  PairInTables(std::string_view from, std::string_view to);

  struct Found {
    double rate = 0;
    PastRate::How how = PastRate::How::printed;
  };
  // Nothing where the table leads to one side only, and for a currency and itself.
  std::optional<Found> in(const TableView& table) const;

 private:
  // A currency that another one leads to by law.
  struct Step {
    std::string code;
    Day since{};                 // when the last of the ratios up to here came to hold
    std::string units;           // of the one before that became…
    std::string successorUnits;  // … so many of this one
  };
  struct Side {
    std::string code;
    std::vector<Step> steps;
  };
  // A side's figure in a table: printed, of the code before `steps` of its steps.
  struct Figure {
    std::string_view text;
    std::size_t steps = 0;
    bool isBase = false;
  };

  static Side sideOf(std::string_view code);
  static std::optional<Figure> figureIn(const TableView& table, const Side& side);
  static void apply(const Side& side, const Figure& figure, bool isTop, FigureQuotient& quotient);

  Side from_;
  Side to_;
};

}  // namespace fexora
