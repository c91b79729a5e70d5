#include "programs/fexora/TextPlot.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include <sys/ioctl.h>
#include <unistd.h>

#include "fexora/platform/base/Environment.h"
#include "fexora/platform/text/AsciiCase.h"

#include "programs/fexora/NumberColumn.h"
#include "programs/shared/PlotScale.h"

namespace fexora::program {
namespace {

constexpr int kRows = 12;
constexpr int kFewestColumns = 24;
constexpr int kMostColumns = 200;
constexpr std::array kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

int daysSince(Day first, Day day) {
  return static_cast<int>((day - first).count());
}

// Dots, several a character: two by four in braille, one in ASCII.
class Canvas {
 public:
  Canvas(int columns, int rows, bool isBraille)
      : dotsWide_(isBraille ? 2 : 1),
        dotsHigh_(isBraille ? 4 : 1),
        columns_(columns),
        rows_(rows),
        dots_(at(0, height())) {}

  int width() const { return columns_ * dotsWide_; }
  int height() const { return rows_ * dotsHigh_; }

  // From above.
  void set(int x, int y) { dots_[at(x, y)] = true; }

  void line(int fromX, int fromY, int toX, int toY) {
    const int steps = std::max({std::abs(toX - fromX), std::abs(toY - fromY), 1});
    for (int i = 0; i <= steps; ++i) {
      const double part = static_cast<double>(i) / steps;
      set(static_cast<int>(std::lround(fromX + part * (toX - fromX))),
          static_cast<int>(std::lround(fromY + part * (toY - fromY))));
    }
  }

  // Without blanks at the end.
  std::string row(int row) const {
    std::string text;
    std::size_t inked = 0;
    for (int column = 0; column < columns_; ++column) {
      const unsigned ink = inkOf(column, row);
      text += ink == 0 ? " " : dotsWide_ == 1 ? "*" : braille(ink);
      if (ink != 0) inked = text.size();
    }
    text.resize(inked);
    return text;
  }

 private:
  std::size_t at(int x, int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(width()) +
           static_cast<std::size_t>(x);
  }
  // The dots of a character, numbered as braille's are.
  unsigned inkOf(int column, int row) const {
    static constexpr std::array<std::array<unsigned, 2>, 4> kDots = {
        {{0x01, 0x08}, {0x02, 0x10}, {0x04, 0x20}, {0x40, 0x80}}};
    unsigned ink = 0;
    for (int y = 0; y < dotsHigh_; ++y) {
      for (int x = 0; x < dotsWide_; ++x) {
        if (dots_[at(column * dotsWide_ + x, row * dotsHigh_ + y)])
          ink |= kDots.at(static_cast<std::size_t>(y)).at(static_cast<std::size_t>(x));
      }
    }
    return ink;
  }

  // U+2800 and the dots, in UTF-8.
  static std::string braille(unsigned ink) {
    std::string text = "\xE2";
    text += static_cast<char>(0xA0U | (ink >> 6U));
    text += static_cast<char>(0x80U | (ink & 0x3FU));
    return text;
  }

  int dotsWide_;
  int dotsHigh_;
  int columns_;
  int rows_;
  std::vector<bool> dots_;
};

class Plot {
 public:
  Plot(const std::vector<DayRate>& rates, const PlotForm& form)
      : rates_(rates), isBraille_(form.isBraille), scale_(plotScale(rates)) {
    const int columns = std::clamp(form.columns, kFewestColumns, kMostColumns) - 1;
    for (const double value : scale_.numbers()) {
      labelWidth_ = std::max(labelWidth_, numberWidth(numberText(value)));
    }
    width_ = std::max(columns - static_cast<int>(labelWidth_) - 2, 10);
    first_ = rates.front().day;
    days_ = std::max(daysSince(first_, rates.back().day), 1);
  }

  std::vector<std::string> lines() const {
    Canvas canvas(width_, kRows, isBraille_);
    draw(canvas);
    std::vector<std::string> lines;
    for (int row = 0; row < kRows; ++row) {
      const std::string label = labelOf(row);
      std::string line(labelWidth_ - numberWidth(label), ' ');
      line.append(label).append(" ");
      line += isBraille_ ? (label.empty() ? "│" : "┤") : "|";
      lines.push_back(line + canvas.row(row));
    }
    addDays(lines);
    return lines;
  }

 private:
  std::string numberText(double value) const {
    return fexora::Text::process().formatNumber(value, Locale::current(),
                                                {scale_.digits, scale_.digits, false});
  }

  // The number that stands beside a row: one whose own place falls into it.
  std::string labelOf(int row) const {
    for (const double value : scale_.numbers()) {
      const double part = (scale_.high - value) / (scale_.high - scale_.low);
      if (std::min(static_cast<int>(part * kRows), kRows - 1) == row) {
        return numberText(value);
      }
    }
    return {};
  }

  int place(Day day, int width) const {
    return static_cast<int>(
        std::lround(static_cast<double>(daysSince(first_, day)) / days_ * (width - 1)));
  }

  void draw(Canvas& canvas) const {
    int lastX = 0;
    int lastY = 0;
    for (std::size_t i = 0; i < rates_.size(); ++i) {
      const int x = place(rates_[i].day, canvas.width());
      const double part = (scale_.high - rates_[i].rate) / (scale_.high - scale_.low);
      const int y = std::clamp(static_cast<int>(std::lround(part * (canvas.height() - 1))), 0,
                               canvas.height() - 1);
      const bool isGap = i == 0 || rates_[i].day - rates_[i - 1].day > kPlotGap;
      if (isGap) {
        canvas.set(x, y);
      } else {
        canvas.line(lastX, lastY, x, y);
      }
      lastX = x;
      lastY = y;
    }
  }

  static std::string textOf(const DayMark& mark) {
    const std::chrono::year_month_day date(mark.day);
    std::string month = kMonths.at(static_cast<unsigned>(date.month()) - 1);
    switch (mark.unit) {
      case DayMark::Unit::year:
        return std::to_string(static_cast<int>(date.year()));
      case DayMark::Unit::month:
        return month;
      case DayMark::Unit::day:
        break;
    }
    return std::to_string(static_cast<unsigned>(date.day())) + " " + month;
  }

  void addDays(std::vector<std::string>& lines) const {
    std::vector<bool> ticks(static_cast<std::size_t>(width_));
    std::string texts(labelWidth_ + 2 + static_cast<std::size_t>(width_), ' ');
    std::size_t free = 0;
    for (const DayMark& mark : dayMarks(first_, rates_.back().day, std::max(width_ / 12, 2))) {
      const std::string text = textOf(mark);
      const int at = place(mark.day, width_);
      const auto middle = labelWidth_ + 2 + static_cast<std::size_t>(at);
      const auto begin = std::min(middle - std::min(middle, text.size() / 2),
                                  texts.size() - std::min(texts.size(), text.size()));
      if (begin < free) continue;
      texts.replace(begin, text.size(), text);
      free = begin + text.size() + 1;
      ticks[static_cast<std::size_t>(at)] = true;
    }
    std::string axis(labelWidth_ + 1, ' ');
    axis += isBraille_ ? "└" : "+";
    for (const bool tick : ticks) axis += isBraille_ ? (tick ? "┬" : "─") : (tick ? "+" : "-");
    lines.push_back(axis);
    texts.resize(texts.find_last_not_of(' ') + 1);
    lines.push_back(texts);
  }

  const std::vector<DayRate>& rates_;
  bool isBraille_;
  PlotScale scale_;
  std::size_t labelWidth_ = 0;
  int width_ = 0;
  Day first_{};
  int days_ = 1;
};

bool isUnicodeLocale() {
  for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
    const auto value = environment(name);
    if (!value || value->empty()) continue;
    const std::string upper = ascii::uppercased(*value);
    return upper.find("UTF-8") != std::string::npos || upper.find("UTF8") != std::string::npos;
  }
  return false;
}

}  // namespace

std::vector<std::string> textPlot(const std::vector<DayRate>& rates, const PlotForm& form) {
  return Plot(rates, form).lines();
}

PlotForm terminalForm() {
  PlotForm form;
  form.isBraille = isUnicodeLocale();
  const auto named = environment("COLUMNS");
  const auto columns = named ? parseInteger(*named) : std::nullopt;
  winsize size{};
  if (columns && *columns > 0) {
    form.columns = static_cast<int>(std::min<std::int64_t>(*columns, kMostColumns));
  } else if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) {
    form.columns = size.ws_col;
  }
  return form;
}

}  // namespace fexora::program
