// A line of values by days, drawn with characters.
#pragma once

#include <string>
#include <vector>

#include "fexora/fexora.h"

namespace fexora::program {

struct PlotForm {
  int columns = 80;        // of the terminal; 24 at least are taken
  bool isBraille = false;  // else ASCII alone
};

// Lines without their ends: an axis of values on the left, one of days below. A day without a value
// for a week is a gap. Of at least one rate.
std::vector<std::string> textPlot(const std::vector<DayRate>& rates, const PlotForm& form);

// Whether the terminal of standard output shows Unicode by the environment's locale, and how wide
// it is: $COLUMNS before what the terminal says, 80 where neither does.
PlotForm terminalForm();

}  // namespace fexora::program
