#include <algorithm>
#include <vector>

#include "programs/sources/Source.h"
#include "programs/sources/TableMaker.h"

namespace fexora::sources {
namespace {

constexpr std::string_view kNone = "N/A";
// A line of some fifty cells has 400 bytes.
constexpr std::size_t kLongestLine = std::size_t{64} << 10;

// "Date,USD,JPY," and then a line a day.
class LinesReader {
 public:
  LinesReader(const std::string& name, const TakeTable& take, PastReading& reading)
      : tables_(name, take, reading) {
    tables_.setSource("ecb", "EUR");
  }

  void take(std::string_view line) {
    ++number_;
    const std::vector<std::string_view> cells = cellsOf(line);
    if (cells.size() == 1 && cells.front().empty()) return;
    if (codes_.empty()) {
      if (cells.front() != "Date") {
        tables_.reject(number_, {}, "its first line is not \"Date\" and codes, so it names no day");
      }
      for (const std::string_view cell : cells) codes_.emplace_back(cell);
      return;
    }
    if (cells.size() != codes_.size()) tables_.reject(number_, {}, "it has other columns");
    tables_.begin(number_, cells.front());
    for (std::size_t i = 1; i < cells.size(); ++i) {
      if (codes_[i].empty() || cells[i].empty() || cells[i] == kNone) continue;
      tables_.add(number_, codes_[i], cells[i]);
    }
  }

  void end() { tables_.end(); }
  [[noreturn]] void rejectLong() const { tables_.reject(number_ + 1, {}, "it is too long"); }

 private:
  static std::vector<std::string_view> cellsOf(std::string_view line) {
    std::vector<std::string_view> cells;
    while (true) {
      const auto comma = std::min(line.find(','), line.size());
      std::string_view cell = line.substr(0, comma);
      while (!cell.empty() && (cell.back() == ' ' || cell.back() == '\r')) cell.remove_suffix(1);
      while (!cell.empty() && cell.front() == ' ') cell.remove_prefix(1);
      cells.push_back(cell);
      if (comma == line.size()) return cells;
      line.remove_prefix(comma + 1);
    }
  }

  TableMaker tables_;
  std::vector<std::string> codes_;
  std::size_t number_ = 0;
};

}  // namespace

void readEuroLines(const std::string& name, const NextPiece& next, const TakeTable& take,
                   PastReading& reading) {
  LinesReader lines(name, take, reading);
  std::string rest;
  for (std::string_view piece = next(); !piece.empty(); piece = next()) {
    rest += piece;
    std::string_view whole = rest;
    for (auto end = whole.find('\n'); end != std::string_view::npos; end = whole.find('\n')) {
      lines.take(whole.substr(0, end));
      whole.remove_prefix(end + 1);
    }
    rest.erase(0, rest.size() - whole.size());
    if (rest.size() > kLongestLine) lines.rejectLong();
  }
  lines.take(rest);
  lines.end();
}

}  // namespace fexora::sources
