#include "fexora/input/SentenceDay.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <utility>
#include <vector>

#include "fexora/platform/text/AsciiCase.h"

namespace fexora {
namespace {

namespace chrono = std::chrono;

constexpr std::string_view kBetweenWords = " \t,";

struct MonthWord {
  std::string_view word;
  unsigned month;
};
// English, German, French and Arabic; a word that several share stands once.
constexpr MonthWord kMonths[] = {
    {"january", 1},   {"jan", 1},       {"januar", 1},    {"jänner", 1},    {"janvier", 1},
    {"يناير", 1},     {"february", 2},  {"feb", 2},       {"februar", 2},   {"février", 2},
    {"fevrier", 2},   {"فبراير", 2},    {"march", 3},     {"mar", 3},       {"märz", 3},
    {"maerz", 3},     {"mars", 3},      {"مارس", 3},      {"april", 4},     {"apr", 4},
    {"avril", 4},     {"أبريل", 4},     {"ابريل", 4},     {"may", 5},       {"mai", 5},
    {"مايو", 5},      {"june", 6},      {"jun", 6},       {"juni", 6},      {"juin", 6},
    {"يونيو", 6},     {"july", 7},      {"jul", 7},       {"juli", 7},      {"juillet", 7},
    {"يوليو", 7},     {"august", 8},    {"aug", 8},       {"août", 8},      {"aout", 8},
    {"أغسطس", 8},     {"september", 9}, {"sep", 9},       {"sept", 9},      {"septembre", 9},
    {"سبتمبر", 9},    {"october", 10},  {"oct", 10},      {"oktober", 10},  {"okt", 10},
    {"octobre", 10},  {"أكتوبر", 10},   {"اكتوبر", 10},   {"november", 11}, {"nov", 11},
    {"novembre", 11}, {"نوفمبر", 11},   {"december", 12}, {"dec", 12},      {"dezember", 12},
    {"dez", 12},      {"décembre", 12}, {"decembre", 12}, {"ديسمبر", 12},
};
constexpr std::string_view kYesterday[] = {"yesterday", "gestern", "hier", "昨日", "أمس", "امس"};
constexpr std::string_view kBefore[] = {"on", "am", "vom", "le", "du", "في", "يوم"};

template <std::size_t N>
bool isOneOf(const std::string_view (&words)[N], std::string_view word) noexcept {
  return std::find(std::begin(words), std::end(words), word) != std::end(words);
}

struct DayWord {
  std::string lower;  // its ASCII letters small
  std::size_t begin;
};

// The last words, the last one first.
std::vector<DayWord> lastWords(std::string_view text) {
  constexpr std::size_t kMost = 4;
  std::vector<DayWord> words;
  while (words.size() < kMost) {
    const auto last = text.find_last_not_of(kBetweenWords);
    if (last == std::string_view::npos) break;
    text = text.substr(0, last + 1);
    const std::size_t begin = text.find_last_of(kBetweenWords) + 1;  // npos + 1 is 0
    words.push_back({ascii::lowercased(text.substr(begin)), begin});
    text = text.substr(0, begin);
  }
  return words;
}

// The whole text as digits, with one of the endings perhaps.
std::optional<unsigned> number(std::string_view text, std::size_t most) {
  for (const std::string_view end : {".", "st", "nd", "rd", "th", "er"}) {
    if (text.size() > end.size() && text.ends_with(end)) {
      text.remove_suffix(end.size());
      break;
    }
  }
  unsigned value = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool isWhole = read.ec == std::errc() && read.ptr == text.data() + text.size();
  return isWhole && text.size() <= most ? std::optional(value) : std::nullopt;
}

std::optional<unsigned> monthOf(std::string_view word) {
  if (word.size() > 3 && word.ends_with('.')) word.remove_suffix(1);
  const auto* const at = std::find_if(std::begin(kMonths), std::end(kMonths),
                                      [word](const MonthWord& each) { return each.word == word; });
  return at != std::end(kMonths) ? std::optional(at->month) : std::nullopt;
}

std::optional<chrono::sys_days> dayOf(unsigned year, unsigned month, unsigned day) {
  constexpr unsigned kFirst = 1900;
  constexpr unsigned kLast = 2199;
  const auto date = chrono::year(static_cast<int>(year)) / chrono::month(month) / chrono::day(day);
  if (year < kFirst || year > kLast || !date.ok()) return std::nullopt;
  return chrono::sys_days(date);
}

// "2024-03-01"
std::optional<chrono::sys_days> isoDay(std::string_view text) {
  constexpr std::size_t kLength = 10;
  if (text.size() != kLength || text[4] != '-' || text[7] != '-') return std::nullopt;
  // No "1." and no "1st".
  if (text.find_first_not_of("0123456789-") != std::string_view::npos) return std::nullopt;
  const auto year = number(text.substr(0, 4), 4);
  const auto month = number(text.substr(5, 2), 2);
  const auto day = number(text.substr(8), 2);
  return year && month && day ? dayOf(*year, *month, *day) : std::nullopt;
}

// "2024年3月1日"
std::optional<chrono::sys_days> japaneseDay(std::string_view text) {
  std::array<unsigned, 3> parts{};
  std::size_t at = 0;
  for (const std::string_view mark : {"年", "月", "日"}) {
    const auto end = text.find(mark);
    if (end == std::string_view::npos) return std::nullopt;
    const auto part = number(text.substr(0, end), 4);
    if (!part) return std::nullopt;
    parts.at(at++) = *part;
    text.remove_prefix(end + mark.size());
  }
  return text.empty() ? dayOf(parts[0], parts[1], parts[2]) : std::nullopt;
}

struct Found {
  chrono::sys_days day;
  std::size_t words;
  bool hasYear;
  bool isIso = false;
};

std::optional<Found> namedMonth(const std::vector<DayWord>& words, chrono::sys_days today) {
  const auto read = [&](std::size_t day, std::size_t month,
                        std::optional<unsigned> year) -> std::optional<chrono::sys_days> {
    if (std::max(day, month) >= words.size()) return std::nullopt;
    const auto numbered = number(words[day].lower, 2);
    const auto named = monthOf(words[month].lower);
    if (!numbered || !named) return std::nullopt;
    if (year) return dayOf(*year, *named, *numbered);
    // The last such day there was: 29 February may have been eight years ago.
    constexpr unsigned kMostYears = 8;
    const auto now = static_cast<unsigned>(static_cast<int>(chrono::year_month_day(today).year()));
    for (unsigned ago = 0; ago <= kMostYears; ++ago) {
      const auto last = dayOf(now - ago, *named, *numbered);
      if (last && *last <= today) return last;
    }
    return std::nullopt;
  };
  const auto year = words.front().lower.size() == 4 ? number(words.front().lower, 4) : std::nullopt;
  if (year) {
    if (const auto day = read(2, 1, year)) return Found{*day, 3, true};
    if (const auto day = read(1, 2, year)) return Found{*day, 3, true};
    return std::nullopt;
  }
  if (const auto day = read(1, 0, std::nullopt)) return Found{*day, 2, false};
  if (const auto day = read(0, 1, std::nullopt)) return Found{*day, 2, false};
  return std::nullopt;
}

std::optional<Found> foundAtEnd(const std::vector<DayWord>& words, chrono::sys_days today) {
  const std::string& last = words.front().lower;
  if (isOneOf(kYesterday, last)) return Found{today - chrono::days(1), 1, true};
  if (const auto day = isoDay(last)) return Found{*day, 1, true, true};
  if (const auto day = japaneseDay(last)) return Found{*day, 1, true};
  return namedMonth(words, today);
}

// "2024-03-01 usd eur", "2024-03-01 -5 usd". Before one word it may be a number of that currency,
// and a sign that stands alone goes on with a calculation.
std::optional<SentenceDay> atFront(std::string_view text) {
  constexpr std::size_t kIso = 10;
  const std::size_t begin = std::min(text.find_first_not_of(" \t"), text.size());
  const auto day = isoDay(text.substr(begin, kIso));
  const std::size_t end = begin + kIso;
  const auto rest = day ? text.find_first_not_of(" \t", end) : std::string_view::npos;
  if (rest == std::string_view::npos || rest == end) return std::nullopt;
  const std::string_view asked = text.substr(rest, text.find_last_not_of(" \t") + 1 - rest);
  if (asked.find_first_of(" \t0123456789") == std::string_view::npos) return std::nullopt;
  for (const std::string_view sign : {"+ ", "- ", "\u2212 "}) {
    if (asked.starts_with(sign)) return std::nullopt;
  }
  return SentenceDay{*day, rest, text.size(), true};
}

}  // namespace

std::optional<SentenceDay> sentenceDay(std::string_view text, chrono::sys_days today) {
  if (const auto day = atFront(text)) return day;
  const std::vector<DayWord> words = lastWords(text);
  if (words.empty()) return std::nullopt;
  const auto found = foundAtEnd(words, today);
  if (!found || found->words >= words.size()) return std::nullopt;
  const DayWord& before = words[found->words];
  const bool isTold = isOneOf(kBefore, before.lower);
  if (!found->hasYear && !isTold) return std::nullopt;
  const std::size_t end = isTold ? before.begin : words[found->words - 1].begin;
  const auto last = text.substr(0, end).find_last_not_of(kBetweenWords);
  if (last == std::string_view::npos) return std::nullopt;
  return SentenceDay{found->day, 0, last + 1, found->isIso};
}

bool opensDay(std::string_view word) {
  return isOneOf(kBefore, ascii::lowercased(word));
}

}  // namespace fexora
