// The table of sentences that the programs are tried with, too, and what is wrong with others.
#include "fexora/input/Sentence.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "fexora/catalogue/CurrencyFacts.h"
#include "fexora/catalogue/CurrencyNames.h"
#include "fexora/history/PublishedTable.h"
#include "fexora/input/SentenceDay.h"
#include "fexora/platform/base/ModuleEntries.h"
#include "fexora/platform/text/ProcessText.h"

#include "tests/support/VirtualPlatform.h"

namespace fexora::test {
namespace {

using Problem = SentenceProblem::Kind;

const char* nameOf(SentenceNotice::Kind kind) {
  constexpr const char* kNames[] = {"other",      "region", "trade",  "name",
                                    "hundredths", "part",   "ounces", "accounting"};
  return kNames[static_cast<std::size_t>(kind)];
}

std::vector<std::string> linesOf(const char* name) {
  std::ifstream file(std::string(FEXORA_TEST_SOURCE_DIR "/tests/sentences/") + name);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) {
    if (!line.starts_with("#")) lines.push_back(line);
  }
  return lines;
}

// As far as what is written in the table has digits.
std::string numberText(double value) {
  char text[40];
  std::snprintf(text, sizeof text, "%.13g", value);
  return text;
}

// The columns after the sentence, as the table has them.
std::string meaningOf(const Sentence& sentence) {
  if (sentence.problem) return "!\t-\t-";
  std::string text = numberText(sentence.amount.value);
  if (sentence.amount.other) text += "|" + numberText(*sentence.amount.other);
  text += "\t" + (sentence.source != nullptr ? sentence.source->code() : "-") + "\t";
  for (const CurrencyRef& each : sentence.destinations) {
    text += (text.back() == '\t' ? "" : " ") + each->code();
  }
  if (sentence.destinations.empty()) text += "-";
  std::vector<std::string> notices;
  for (const SentenceNotice& notice : sentence.notices) notices.emplace_back(nameOf(notice.kind));
  // That is for the programs to say.
  const CurrencyFacts* const facts =
      sentence.source != nullptr ? currencyFacts(sentence.source->code()) : nullptr;
  if (facts != nullptr && facts->kind == CurrencyKind::withdrawn) notices.emplace_back("withdrawn");
  std::sort(notices.begin(), notices.end());
  notices.erase(std::unique(notices.begin(), notices.end()), notices.end());
  for (const std::string& notice : notices) text += (&notice == &notices[0] ? "\t" : " ") + notice;
  return text;
}

// The same with the notices in the order of the alphabet.
std::string expected(std::istringstream& rest) {
  std::string amount;
  std::string source;
  std::string destinations;
  std::string notices;
  std::getline(rest, amount, '\t');
  std::getline(rest, source, '\t');
  std::getline(rest, destinations, '\t');
  std::getline(rest, notices);
  std::istringstream words(notices);
  std::vector<std::string> sorted{std::istream_iterator<std::string>(words), {}};
  std::sort(sorted.begin(), sorted.end());
  const auto bar = amount.find('|');
  if (amount != "!") {
    const auto number = [](const std::string& digits) { return numberText(std::stod(digits)); };
    amount = number(amount.substr(0, bar)) +
             (bar == amount.npos ? "" : "|" + number(amount.substr(bar + 1)));
  }
  std::string text = amount + "\t" + source + "\t" + destinations;
  for (const std::string& notice : sorted) text += (&notice == &sorted[0] ? "\t" : " ") + notice;
  return text;
}

class SentenceTest : public testing::Test {
 protected:
  SentenceTest() { desktop_.platform.strings = &names_; }

  Sentence read(std::string_view text, const std::string& locale = "en_US") {
    names_.setLanguage(locale);
    SentenceOptions options;
    options.locale = locale;
    options.catalogue = &catalogue_;
    return readSentence(text, options);
  }

 private:
  VirtualPlatform desktop_;
  CurrencyNames names_;
  CurrencyManager catalogue_{desktop_.platform};
};

TEST_F(SentenceTest, Table_IsReadAsWritten) {
  const auto lines = linesOf("sentences.tsv");
  EXPECT_GE(lines.size(), 200U);
  for (const std::string& line : lines) {
    std::istringstream rest(line);
    std::string locale;
    std::string text;
    std::getline(rest, locale, '\t');
    std::getline(rest, text, '\t');
    const Sentence sentence = read(text, locale);
    EXPECT_EQ(meaningOf(sentence), expected(rest)) << locale << ' ' << text;
    EXPECT_FALSE(sentence.source != nullptr && sentence.hasAmount &&
                 !sentence.destinations.empty() && sentence.isDoubtful)
        << text;
  }
}

TEST_F(SentenceTest, AboutSomethingElse_IsWrongOrDoubtful) {
  for (const std::string& line : linesOf("others.txt")) {
    const Sentence sentence = read(line);
    EXPECT_TRUE(sentence.problem || sentence.isDoubtful || !sentence.hasAmount)
        << line << ": " << meaningOf(sentence);
  }
}

TEST_F(SentenceTest, WhatIsWrong_SaysWhereAndWhatIsNear) {
  struct Row {
    const char* text;
    Problem kind;
    std::size_t place;
    std::string near;
  };
  for (const Row& row :
       std::initializer_list<Row>{{"", Problem::noAmount, 0, ""},
                                  {"100 UDS in eur", Problem::unknownCurrency, 4, "USD"},
                                  {"100 usd in GPB", Problem::unknownCurrency, 11, "GBP"},
                                  {"100 USS", Problem::unknownCurrency, 4, "USD"},
                                  {"100 foo", Problem::unknownCurrency, 4, ""},
                                  {"100 of usd in zz", Problem::unknownCurrency, 14, ""},
                                  {"100 bitcon", Problem::unknownCurrency, 4, "BTC"},
                                  {"100 usd eu ro", Problem::unknownCurrency, 11, "RON"},
                                  {"try 100 usd", Problem::unknownCurrency, 0, "TRY"},
                                  {"2024-03-01 100 foo eur", Problem::unknownCurrency, 15, ""},
                                  {"10 kg in lb", Problem::unit, 3, ""},
                                  {"10 to 5", Problem::unexpected, 6, ""},
                                  {"1.2.3 usd", Problem::noNumber, 0, ""},
                                  {"0x10 usd", Problem::noNumber, 1, ""},
                                  {".5e400 usd", Problem::noNumber, 0, ""},
                                  {"12+", Problem::incomplete, 3, ""},
                                  {"12+*3 usd", Problem::unexpected, 3, ""},
                                  {"(1+2 usd", Problem::unbalanced, 0, ""},
                                  {"1+2) usd", Problem::unbalanced, 3, ""},
                                  {"1/(2-2) usd", Problem::divisionByZero, 1, ""},
                                  {"1e300*1e300 usd", Problem::tooLarge, 0, ""},
                                  {"5 € + 3 $", Problem::secondCurrency, 10, ""},
                                  {"5 usd * 3 usd", Problem::secondCurrency, 6, ""},
                                  {"5\xFF", Problem::notText, 1, ""}}) {
    const Sentence sentence = read(row.text);
    ASSERT_TRUE(sentence.problem) << row.text << ": " << meaningOf(sentence);
    EXPECT_EQ(sentence.problem->kind, row.kind) << row.text << ": " << sentence.problem->reason;
    EXPECT_EQ(sentence.problem->place, row.place) << row.text;
    EXPECT_FALSE(sentence.problem->reason.empty());
    const auto& near = sentence.problem->near;
    EXPECT_EQ(near.empty() ? "" : near.front()->code(), row.near) << row.text;
  }
  EXPECT_EQ(read("1" + std::string(2000, '+')).problem->kind, Problem::tooLong);
  EXPECT_EQ(read(std::string(400, '(') + "7" + std::string(400, ')') + " usd").amount.value, 7);
}

TEST_F(SentenceTest, DaysAtTheEnd_AreReadWhereNothingIsGuessed) {
  const std::chrono::sys_days today = std::chrono::year(2026) / 11 / 25;
  struct Row {
    const char *text, *rest, *day;
  };
  for (const Row& row :
       std::vector<Row>{{"100 usd in eur on 1 march 2024", "100 usd in eur", "2024-03-01"},
                        {"100 usd eur March 1st, 2024", "100 usd eur", "2024-03-01"},
                        {"100 usd eur on 2024-03-01", "100 usd eur", "2024-03-01"},
                        {"2024-03-01 100 usd eur", "100 usd eur", "2024-03-01"},
                        {"100 usd eur yesterday", "100 usd eur", "2026-11-24"},
                        {"100 usd in eur on 1 dec", "100 usd in eur", "2025-12-01"},
                        {"100 usd in eur on 29 feb", "100 usd in eur", "2024-02-29"},
                        {"100 usd in eur am 1. März 2024", "100 usd in eur", "2024-03-01"},
                        {"5 eur en usd le 1er février 2024", "5 eur en usd", "2024-02-01"},
                        {"100ドル 円 2024年3月1日", "100ドル 円", "2024-03-01"},
                        {"100 usd eur في 1 مارس 2024", "100 usd eur", "2024-03-01"},
                        {"100 usd eur 1 march", "", ""},
                        {"100 usd eur 01/03/2024", "", ""},
                        {"100 usd eur on 30 feb 2024", "", ""},
                        {"1 march 2024", "", ""},
                        {"yesterday", "", ""},
                        {"2024-03-01 usd", "", ""},
                        {"2024-1.-1. usd eur", "", ""},
                        {"2024-03-01 usd eur", "usd eur", "2024-03-01"},
                        {"2024-03-01 - 5 usd", "", ""},
                        {"2024-03-01", "", ""}}) {
    const auto found = sentenceDay(row.text, today);
    ASSERT_EQ(found.has_value(), *row.day != '\0') << row.text;
    if (!found) continue;
    const std::string text = row.text;
    EXPECT_EQ(text.substr(found->begin, found->end - found->begin), row.rest);
    EXPECT_EQ(found->day, dayFromIsoText(row.day)) << row.text;
  }
  const Sentence dated = read("100 usd in eur on 1 march 2024");
  ASSERT_FALSE(dated.problem);
  EXPECT_EQ(dated.day, dayFromIsoText("2024-03-01"));
  EXPECT_EQ(dated.destinations.size(), 1u);
  EXPECT_FALSE(read("100 usd in eur").day);
  EXPECT_TRUE(read("100 usd in foo on 1 march 2024").problem);
  // As many days as fit cost no more than their length.
  std::string days;
  while (days.size() < 900) days += "2024-03-01 ";
  EXPECT_TRUE(read(days + "x").problem);
  EXPECT_FALSE(read("usd eur " + days).day);
}

TEST_F(SentenceTest, CodesInPlainLocales_OpenNoModule) {
  int opened = 0;
  ProcessText text([&] {
    ++opened;
    return fexora_text_module();
  });
  SentenceOptions options;
  options.rules = &text;
  options.locale = "en_US";
  for (const char* typed : {"100 usd in eur", "€5k to gbp", "$1,234.50", "12+3*2 usd eur, jpy",
                            "usd/eur", "100 GBp", "top 10"}) {
    EXPECT_FALSE(readSentence(typed, options).problem) << typed;
  }
  EXPECT_EQ(opened, 0);
}

}  // namespace
}  // namespace fexora::test
