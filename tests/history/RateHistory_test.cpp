// Which table a day's rate is from, what keeping does to one that is there, and what becomes of a
// file that is not as it should be. The figures of whole tables are test_past_rates.py's.
#include "fexora/history/RateHistory.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <tuple>

#include <gtest/gtest.h>

#include "fexora/history/FigureQuotient.h"
#include "fexora/history/TakenTable.h"
#include "fexora/platform/base/Log.h"
#include "fexora/platform/files/PosixFiles.h"

#include "tests/support/ScratchFolder.h"

namespace fexora::test {
namespace {

using How = PastRate::How;

constexpr double kNow = 1'790'000'000;  // 21 September 2026

Day day(const char* text) {
  return dayFromIsoText(text).value();
}

double atFifteenDigits(long double value) {
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "%.15Lg", value);
  return std::strtod(text.data(), nullptr);
}

PublishedTable table(const char* of, const char* source, const char* base,
                     std::vector<std::pair<std::string, std::string>> figures) {
  return {day(of), source, base, std::move(figures)};
}

std::vector<PublishedTable> someTables() {
  return {
      table("1998-06-02", "boe", "USD", {{"DEM", "1.7852"}}),
      table("2000-06-02", "ecb", "EUR", {{"USD", "0.9441"}, {"EUR", "7"}}),
      table("2004-01-02", "ecb", "EUR", {{"USD", "1.2592"}, {"TRL", "1761551"}}),
      table("2026-09-10", "usd", "USD", {{"EUR", "0.86"}, {"XPT", "0.00056"}}),
      table("2026-09-11", "usd", "USD",
            {{"EUR", "0.862"}, {"GBP", "0.74"}, {"BIG", "532849507.62639403"}}),
      table("2026-09-11", "bundled", "USD", {{"EUR", "0.5"}, {"XAU", "0.00025"}}),
      table("2026-09-11", "ecb", "EUR", {{"USD", "1.1592"}, {"GBP", "0.85815"}}),
  };
}

// A container with a history.
class World {
 public:
  World() { keep(someTables()); }

  Kept keep(const std::vector<PublishedTable>& tables) { return history->keep(tables, kNow); }
  std::string file() const { return folder / ".fexora-history/rates.sqlite"; }
  void openAnew() { history = rateHistory(folder.path(), Files::process(), Log::process()); }

  ScratchFolder folder;
  std::unique_ptr<RateHistory> history =
      rateHistory(folder.path(), Files::process(), Log::process());
};

TEST(RateHistory, RateOfADay_IsOfTheNewestTableThatLeadsToBothSides) {
  World world;
  struct Row {
    const char *day, *from, *to;
    PastQuestion question;
    long double rate = 0;
    const char* of = "";
    const char* source = "";
    How how = How::printed;
  };
  const PastQuestion any;
  const PastQuestion dollars{{"usd", "bundled"}, 7};
  const std::vector<Row> rows = {
      // On the day, before it, and of the source that is wanted most.
      {"2026-09-11", "EUR", "GBP", any, 0.85815L, "2026-09-11", "ecb", How::printed},
      {"2026-09-12", "USD", "EUR", any, 1 / 1.1592L, "2026-09-11", "ecb", How::printed},
      {"2026-09-18", "USD", "GBP", any, 0.85815L / 1.1592L, "2026-09-11", "ecb", How::crossed},
      {"2026-09-11", "USD", "EUR", dollars, 0.862L, "2026-09-11", "usd", How::printed},
      {"2026-09-11", "EUR", "GBP", dollars, 0.74L / 0.862L, "2026-09-11", "usd", How::crossed},
      // Both sides of one table, though a newer one has the euro.
      {"2026-09-12", "EUR", "XPT", any, 0.00056L / 0.86L, "2026-09-10", "usd", How::crossed},
      {"2026-09-12", "USD", "XAU", any, 0.00025L, "2026-09-11", "bundled", How::printed},
      {"2026-09-12", "USD", "BIG", any, 532849507.62639403L, "2026-09-11", "usd", How::printed},
      // By law from the day on which the ratio held; before that as it was printed.
      {"2000-06-03", "DEM", "USD", any, 0.9441L / 1.95583L, "2000-06-02", "ecb", How::byLaw},
      {"2000-06-03", "FRF", "DEM", any, 1.95583L / 6.55957L, "2000-06-02", "ecb", How::byLaw},
      {"2026-09-11", "ADP", "EUR", any, 1 / 166.386L, "2026-09-11", "ecb", How::byLaw},
      {"1998-06-03", "DEM", "USD", any, 1 / 1.7852L, "1998-06-02", "boe", How::printed},
      {"2004-01-03", "EUR", "TRL", any, 1761551.0L, "2004-01-02", "ecb", How::printed},
      {"2026-09-11", "EUR", "USD", {{}, 0}, 1.1592L, "2026-09-11", "ecb", How::printed},
  };
  for (const Row& row : rows) {
    const auto found = world.history->on(day(row.day), row.from, row.to, row.question);
    ASSERT_TRUE(found) << row.day << row.from << row.to;
    const bool isPrinted = row.how == How::printed && row.rate > 1e8L;
    EXPECT_EQ(found->rate, isPrinted ? static_cast<double>(row.rate) : atFifteenDigits(row.rate));
    EXPECT_EQ(isoText(found->day), row.of);
    EXPECT_EQ(found->source, row.source);
    EXPECT_EQ(found->how, row.how) << row.day << row.from << row.to;
  }
  for (const Row& row : std::vector<Row>{
           {"2026-09-19", "EUR", "GBP", any},           // too long after
           {"1998-06-01", "DEM", "USD", any},           // before all
           {"2000-06-02", "GRD", "EUR", any},           // its ratio held from 2001 on
           {"2004-01-02", "TRY", "EUR", any},           // there was none yet
           {"1998-06-02", "DEM", "FRF", any},           // one side only
           {"2026-09-11", "EUR", "GBP", {{"boe"}, 7}},  // not of this source
           {"2026-09-12", "EUR", "GBP", {{}, 0}},
           {"2026-09-11", "EUR", "EUR", any},
           {"2026-09-11", "EUR", "", any},
       }) {
    EXPECT_FALSE(world.history->on(day(row.day), row.from, row.to, row.question)) << row.day;
  }
  const std::vector<std::string> many = {"GBP", "XPT", "QQQ"};
  const auto rates = world.history->on(day("2026-09-12"), "USD", many, any);
  EXPECT_TRUE(rates.at(0) && rates.at(1) && !rates.at(2));
  const auto line = world.history->between(day("1999-01-01"), day("2026-09-30"), "EUR", "USD", any);
  EXPECT_EQ(line.size(), 3u);  // the bank's alone
  EXPECT_EQ(line.back().rate, 1.1592);
  EXPECT_EQ(world.history->problem(), "");
}

TEST(RateHistory, Quotients_AreRoundedOnceWhateverTheFigures) {
  for (const auto& [top, bottom] :
       std::vector<std::pair<const char*, const char*>>{{"1", "3"},
                                                        {"2", "3"},
                                                        {"999999999999999.5", "1"},
                                                        {"0.000000000000000125", "8e-30"},
                                                        {"1e-300", "3"},
                                                        {"7.25E+40", "2.5"},
                                                        {"123456789012345678.5", "9"},
                                                        {"1e15", "7"}}) {
    FigureQuotient quotient;
    quotient.multiplyBy(top);
    quotient.divideBy(bottom);
    const long double exact = std::strtold(top, nullptr) / std::strtold(bottom, nullptr);
    EXPECT_EQ(quotient.value(), atFifteenDigits(exact)) << top << "/" << bottom;
  }
}

TEST(RateHistory, Keeping_AddsCorrectsAndTakesAllOrNothing) {
  World world;
  EXPECT_EQ(world.keep(someTables()).figures, 0u);
  const Kept more =
      world.keep({table("2026-09-10", "usd", "USD", {{"EUR", "0.87"}, {"JPY", "147"}}),
                  table("2026-09-20", "usd", "USD", {{"EUR", "0.8"}})});
  EXPECT_EQ(more.problem, "");
  EXPECT_EQ(std::tuple(more.tables, more.figures, more.corrected), std::tuple(1u, 2u, 1u));
  EXPECT_EQ(more.corrections, std::vector<std::string>{"EUR 2026-09-10: 0.87 instead of 0.86"});
  EXPECT_EQ(world.history->replacedOf(day("2026-09-10")),
            std::vector<std::string>{"2026-09-10 usd EUR 0.86"});
  // What a service says anew on the same day is no correction.
  EXPECT_EQ(world.keep({table("2026-09-20", "usd", "USD", {{"EUR", "0.9"}})}).corrected, 0u);
  EXPECT_EQ(world.history->on(day("2026-09-20"), "USD", "EUR", {})->rate, 0.9);
  EXPECT_EQ(world.history->published(day("2026-09-10")).front().figures,
            (std::vector<std::pair<std::string, std::string>>{
                {"EUR", "0.87"}, {"JPY", "147"}, {"XPT", "0.00056"}}));
  const std::vector<PublishedTable> faulty = {table("2026-09-23", "usd", "USD", {{"EUR", "1"}}),
                                              table("2026-09-01", "", "USD", {{"EUR", "1"}}),
                                              table("2026-09-01", "usd", "", {{"EUR", "1"}}),
                                              table("2026-09-01", "usd", "USD", {}),
                                              table("2026-09-01", "usd", "USD", {{"E R", "1"}}),
                                              table("2026-09-01", "usd", "USD", {{"EUR", "-1"}}),
                                              table("2026-09-01", "usd", "USD", {{"EUR", "0"}}),
                                              table("2026-09-01", "usd", "USD", {{"EUR", "inf"}}),
                                              table("2026-09-01", "a b", "USD", {{"EUR", "1"}}),
                                              table("2026-09-10", "usd", "EUR", {{"USD", "1"}}),
                                              table("2026-09-01", "usd", "USD", {{"EUR", "1\n"}})};
  for (const PublishedTable& bad : faulty) {
    const Kept kept = world.keep({table("2026-09-02", "usd", "USD", {{"EUR", "1"}}), bad});
    EXPECT_NE(kept.problem, "");
    EXPECT_EQ(kept.tables, 0u);
  }
  EXPECT_TRUE(world.history->published(day("2026-09-02")).empty());
  EXPECT_EQ(world.history->summary().sources.size(), 4u);
  EXPECT_EQ(std::filesystem::status(world.file()).permissions(), std::filesystem::perms(0600));
  EXPECT_EQ(
      std::distance(std::filesystem::directory_iterator(world.folder / ".fexora-history"), {}), 1);
}

TEST(TakenTable, OfAnyRates_IsOneThatIsKept) {
  RatesTable rates;
  rates.rates = {nullptr, USDRate::make(0.1, "EUR"), USDRate::make(1, "E R"),
                 USDRate::make(std::numeric_limits<double>::infinity(), "GBP")};
  const PublishedTable taken = takenTable(rates, "till", Date(kNow));
  EXPECT_EQ(std::tuple(isoText(taken.day), taken.source, taken.base),
            std::tuple("2026-09-21", "till", "USD"));
  World world;
  EXPECT_EQ(world.keep({taken}).problem, "");
  EXPECT_EQ(world.history->on(day("2026-09-21"), "USD", "EUR", {.sources = {"till"}})->rate, 0.1);
  rates.base = "EUR";
  rates.figures = {{"USD", "1.1000"}, {"G", "-"}};
  rates.published = Date(kNow - 86'400);
  EXPECT_EQ(world.keep({takenTable(rates, "ecb", Date(kNow))}).problem, "");
  EXPECT_EQ(world.history->published(day("2026-09-20")).front().figures,
            (std::vector<std::pair<std::string, std::string>>{{"USD", "1.1000"}}));
}

class Refusing final : public PosixFiles {
 public:
  std::error_code mayChange(const std::string&) override {
    return std::make_error_code(std::errc::read_only_file_system);
  }
};

TEST(RateHistory, WhoeverOnlyReads_MakesNothing) {
  World world;
  Refusing files;
  const auto reader = rateHistory(world.folder.path(), files, Log::process());
  EXPECT_TRUE(reader->on(day("2026-09-11"), "EUR", "USD", {}));
  EXPECT_NE(reader->keep(someTables(), kNow).problem, "");
  world.keep({table("2026-09-12", "ecb", "EUR", {{"USD", "1.5"}})});
  EXPECT_EQ(reader->on(day("2026-09-12"), "EUR", "USD", {})->rate, 1.5);
  const ScratchFolder none;
  const auto empty = rateHistory(none.path(), Files::process(), Log::process());
  EXPECT_FALSE(empty->on(day("2026-09-11"), "EUR", "USD", {}));
  EXPECT_EQ(empty->summary().problem, "");
  EXPECT_TRUE(std::filesystem::is_empty(none.path()));
}

TEST(RateHistory, FileThatIsNotAsItShouldBe_IsKeptAsideOrLeftAlone) {
  const auto change = [](const World& world, std::size_t at, char to) {
    std::string bytes = readFile(world.file());
    bytes.at(at) = to;
    writeFile(world.file(), bytes);
  };
  const std::vector<PublishedTable> next = {table("2026-09-12", "ecb", "EUR", {{"USD", "1.5"}})};
  const auto sources = [](World& world) { return world.history->summary().sources.size(); };
  {
    SCOPED_TRACE("no database");
    World world;
    writeFile(world.file(), std::string(5000, 'x'));
    world.openAnew();
    EXPECT_FALSE(world.history->on(day("2026-09-11"), "EUR", "USD", {}));
    EXPECT_NE(world.history->problem(), "");
    const Kept kept = world.keep(next);
    EXPECT_EQ(kept.problem, "");
    EXPECT_NE(kept.notice.find("damaged-1.sqlite"), std::string::npos);
    EXPECT_EQ(readFile(world.folder / ".fexora-history/damaged-1.sqlite"), std::string(5000, 'x'));
    EXPECT_EQ(sources(world), 1u);
  }
  {
    SCOPED_TRACE("another page's kind; what is whole comes over");
    World world;
    const std::string head = readFile(world.file()).substr(0, 18);
    const std::size_t page = static_cast<unsigned char>(head[16]) * std::size_t{256} +
                             static_cast<unsigned char>(head[17]);
    change(world, 2 * page, '\x55');
    world.openAnew();
    EXPECT_NE(world.keep(next).notice, "");
    EXPECT_EQ(world.history->on(day("2026-09-11"), "EUR", "USD", {})->rate, 1.1592);
  }
  {
    SCOPED_TRACE("a later version");
    World world;
    change(world, 63, '\x02');
    const std::string bytes = readFile(world.file());
    world.openAnew();
    EXPECT_FALSE(world.history->on(day("2026-09-11"), "EUR", "USD", {}));
    EXPECT_NE(world.keep(next).problem.find("later version"), std::string::npos);
    EXPECT_EQ(readFile(world.file()), bytes);
  }
  {
    SCOPED_TRACE("empty, and moved away under one that has it open");
    World world;
    std::filesystem::rename(world.file(), world.file() + ".away");
    writeFile(world.file(), "");
    EXPECT_FALSE(world.history->on(day("2026-09-11"), "EUR", "USD", {}));
    EXPECT_EQ(world.keep(next).notice, "");
    EXPECT_EQ(sources(world), 1u);
  }
  {
    SCOPED_TRACE("a link is not followed; a container that is one is");
    World world;
    const std::string link = world.folder / "link";
    std::filesystem::create_directory_symlink(world.folder.path(), link);
    const auto linked = rateHistory(link, Files::process(), Log::process());
    EXPECT_TRUE(linked->on(day("2026-09-11"), "EUR", "USD", {}));
    std::filesystem::rename(world.file(), world.file() + ".away");
    std::filesystem::create_symlink(world.file() + ".away", world.file());
    world.openAnew();
    EXPECT_FALSE(world.history->on(day("2026-09-11"), "EUR", "USD", {}));
    EXPECT_NE(world.keep(next).problem, "");
  }
}

// Every fifth byte of a small history, and fewer of the zeros that nothing is kept in yet, with one
// of its bits flipped; each byte with FEXORA_HISTORY_FLIPS=1, and all of its bits with 8.
TEST(RateHistory, FlippedBits_MakeATableMissingAndNoFigureAnother) {
  const char* const wanted = std::getenv("FEXORA_HISTORY_FLIPS");
  const unsigned flips = wanted != nullptr ? static_cast<unsigned>(std::atoi(wanted)) : 1;
  World world;
  const auto tables = [&world] {
    std::vector<PublishedTable> all;
    for (const PublishedTable& of : someTables()) {
      for (PublishedTable& found : world.history->published(of.day))
        all.push_back(std::move(found));
    }
    return all;
  };
  const std::string whole = readFile(world.file());
  const std::vector<PublishedTable> kept = tables();
  const auto step = [&](std::size_t at) -> std::size_t {
    if (wanted != nullptr || at < 100) return 1;
    return whole[at] == '\0' ? 23 : 5;
  };
  std::size_t missing = 0;
  for (std::size_t at = 0; at < whole.size(); at += step(at)) {
    for (unsigned i = 0; i < flips; ++i) {
      std::string damaged = whole;
      damaged[at] = static_cast<char>(damaged[at] ^ (1 << ((at * 5 + i) % 8)));
      writeFile(world.file(), damaged);
      world.openAnew();
      const auto left = tables();
      missing += kept.size() > left.size() ? 1 : 0;
      for (const PublishedTable& table : left) {
        EXPECT_TRUE(std::any_of(kept.begin(), kept.end(), [&](const PublishedTable& one) {
          return std::tie(one.day, one.source, one.base, one.figures) ==
                 std::tie(table.day, table.source, table.base, table.figures);
        })) << at;
      }
    }
    const bool isVersion = at >= 60 && at < 64;
    if (isVersion || (at > 100 && at % 61 != 0)) continue;
    const Kept next = world.keep({table("2026-09-12", "ecb", "EUR", {{"USD", "1.5"}})});
    EXPECT_EQ(next.problem, "") << at;
  }
  RecordProperty("missing", static_cast<int>(missing));
  EXPECT_GT(missing, 100u);
}

}  // namespace
}  // namespace fexora::test
