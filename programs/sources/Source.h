// One source of rates, read whole and checked.
//
// Rates are units of a currency that one US dollar buys, whatever the source quotes. A source with
// one figure that may not be used is rejected whole, with the line and the code.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "fexora/platform/values/Date.h"

namespace fexora::sources {

// Why a source is rejected: one line for people, which names it.
struct SourceProblem {
  std::string message;
};

struct SourceRate {
  std::string code;    // upper case
  double rate = 0;     // finite and positive, as its reciprocal is
  std::string figure;  // as it was printed, in the source's base
  std::size_t line = 0;
};

struct Source {
  std::string name;          // as the user knows it, for messages
  Date date;                 // of its rates: the day at midnight UTC, unless it says the moment
  bool isDated = false;      // else `date` is what was given for rates without a day
  std::string base = "USD";  // what it quotes against
  std::vector<SourceRate> rates;
  std::size_t passedOver = 0;  // keys that are no code
};

// Reads the operand: a file, or "-" for standard input. Rates that name no day are of the day their
// file was changed, or of `today` where there is no file. Throws a SourceProblem.
Source readSource(const std::string& operand, Date today);

// The text of a whole source in whichever of the formats its first character tells. Throws a
// SourceProblem.
Source readText(const std::string& name, const std::string& text, Date undated);

// The three formats. Each takes the text of the whole source and the day to give to rates that name
// none, and throws a SourceProblem.
// The daily reference rates of the European Central Bank: units that one euro buys, turned to
// dollars by the file's own dollar figure. https://www.ecb.europa.eu/stats/eurofxref
Source readEuroXml(const std::string& name, const std::string& text, Date undated);
// {"date": "2026-09-29", "usd": {"eur": 0.85, …}} or the same with another base for its key;
// {"base": "EUR", "date": …, "rates": {"USD": 1.16, …}}; or the rates service's own answer: see
// fexora/records/Response.h. Keys that are no code are passed over and counted.
Source readJson(const std::string& name, const std::string& text, Date undated);
// Lines of code,rate; a first line "code,rate" and empty lines are passed over.
Source readCsv(const std::string& name, const std::string& text, Date undated);

// Collects the rates of one source, rejecting what may not be used.
class RateCollector {
 public:
  RateCollector(std::string name, Date undated) {
    source_.name = std::move(name);
    source_.date = undated;
  }

  // "name, line 7, EUR: what"; the code is left out when there is none, and a line of 0.
  [[noreturn]] void reject(std::size_t line, std::string_view code, const std::string& what) const;
  // The number that `text` denotes, with a point as decimal mark.
  double number(std::size_t line, std::string_view code, std::string_view text) const;
  static bool isCode(std::string_view code);
  void add(std::size_t line, std::string_view code, double rate, std::string_view figure);
  void passOver() { ++source_.passedOver; }
  void setDate(std::size_t line, std::string_view day);  // "2026-09-29"
  void setMoment(Date moment);
  bool hasDate() const { return source_.isDated; }
  bool isEmpty() const { return source_.rates.empty(); }
  // As the source declares it. Of a second one that differs it is rejected.
  void setBase(std::size_t line, std::string_view code);

  // With all rates turned to those of one dollar, and the base's own among them. The base that is
  // not declared is the dollar, or the one of the most traded currencies that is 1 where that is
  // not the dollar. Rejects codes that occur twice, a base whose own rate is not 1, and a base for
  // which there is no dollar.
  Source finish() &&;

 private:
  void checkRate(const SourceRate& rate) const;
  void rejectRepeated();
  const SourceRate* find(std::string_view code) const;
  std::string ownBase() const;
  void turnToDollars();

  Source source_;
  bool hasBase_ = false;
};

}  // namespace fexora::sources
