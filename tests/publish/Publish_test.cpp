// The program fexora-publish, run as operators run it.
#include <cmath>
#include <ctime>
#include <filesystem>
#include <map>
#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/values/Date.h"

#include "tests/support/Command.h"
#include "tests/support/JsonRoot.h"
#include "tests/support/ScratchFolder.h"

namespace fexora::test {
namespace {

const std::string kProgram = FEXORA_TEST_BINARY_DIR "/bin/fexora-publish";
const std::string kEuro = FEXORA_TEST_SOURCE_DIR "/examples/data/eur-reference-2026-09-11.xml";
const std::string kDollar = FEXORA_TEST_SOURCE_DIR "/fexora/resources/data/usd-2026-09-29.json";

using Rates = std::map<std::string, double>;

// The answer, checked to be in the wire format.
Dictionary answerOf(const std::string& text) {
  const auto json = test::jsonRoot(text);
  const Dictionary* answer = json ? json->dictionary() : nullptr;
  EXPECT_NE(answer, nullptr);
  if (answer == nullptr) return {};
  EXPECT_EQ(answer->size(), 5U);
  EXPECT_NE(answer->find("serviceMessage")->string(), nullptr);
  EXPECT_NE(answer->find("source")->string(), nullptr);
  EXPECT_EQ(answer->find("count")->number()->intValue(),
            static_cast<std::int64_t>(answer->find("rates")->array()->size()));
  return *answer;
}

Rates ratesOf(const std::string& text) {
  Rates rates;
  const Dictionary answer = answerOf(text);
  for (const Value& rate : *answer.find("rates")->array()) {
    const auto [at, isNew] =
        rates.emplace(*rate.dictionary()->find("code")->string(),
                      rate.dictionary()->find("rate")->number()->doubleValue());
    EXPECT_TRUE(isNew) << at->first;
  }
  return rates;
}

std::string dayBefore(int days) {
  const double now = static_cast<double>(std::time(nullptr));
  return Date(now - days * 86400.0).isoText()->substr(0, 10);
}

class Publish : public testing::Test {
 protected:
  CommandResult publish(std::vector<std::string> words, const std::string& input = {}) {
    words.insert(words.begin(), kProgram);
    return runCommand(words, input);
  }
  Rates published(const std::vector<std::string>& words, const std::string& input = {}) {
    const CommandResult result = publish(words, input);
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.errors, "");
    return ratesOf(result.output);
  }
  // Refused with this exit code and a message that holds each of `parts`; what stood there stays.
  void expectRefused(std::vector<std::string> words, const std::string& input,
                     const std::vector<std::string>& parts, int exitCode = 2) {
    writeFile(output, "old");
    words.insert(words.begin(), {"--output", output});
    const CommandResult result = publish(words, input);
    EXPECT_EQ(result.exitCode, exitCode) << input << result.errors;
    EXPECT_EQ(result.output, "");
    EXPECT_TRUE(result.errors.starts_with("fexora-publish: ")) << result.errors;
    EXPECT_LE(result.errors.size(), 520U);
    EXPECT_EQ(result.errors.find('\n'), result.errors.size() - 1);
    for (const auto& part : parts) {
      EXPECT_NE(result.errors.find(part), std::string::npos) << part << " in " << result.errors;
    }
    EXPECT_EQ(readFile(output), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(scratch.path()), {}), 1);
  }

  ScratchFolder scratch;
  const std::string output = scratch / "rates.json";
};

TEST_F(Publish, EuroXml_IsTurnedToDollars) {
  const Rates rates = published({kEuro});
  const Rates expected = {{"USD", 1.0},
                          {"EUR", 1 / 1.1592},
                          {"JPY", 178.56 / 1.1592},
                          {"GBP", 0.85815 / 1.1592},
                          {"CHF", 0.9331 / 1.1592},
                          {"AUD", 1.7684 / 1.1592},
                          {"CAD", 1.6012 / 1.1592},
                          {"ILS", 3.5301 / 1.1592},
                          {"NZD", 1.9455 / 1.1592}};
  EXPECT_EQ(rates, expected);
}

TEST_F(Publish, DollarJson_KeepsEveryFigure) {
  const Rates rates = published({kDollar});
  const auto source = test::jsonRoot(readFile(kDollar));
  const Dictionary& figures = *source->dictionary()->find("usd")->dictionary();
  ASSERT_EQ(rates.size(), 339U);
  ASSERT_EQ(figures.size(), 339U);
  for (const auto& [code, figure] : figures) {
    std::string upper = code;
    for (char& c : upper) c = static_cast<char>(std::toupper(c));
    EXPECT_EQ(rates.at(upper), figure.number()->doubleValue()) << code;
  }
}

TEST_F(Publish, LongFigures_KeepTheirValue) {
  const Rates rates = published(
      {"-"}, R"({"usd": {"eur": 0.123456789012345678901234567, "jpy": 1034444444444444459008e0}})");
  EXPECT_EQ(rates,
            (Rates{{"EUR", 0.123456789012345678901234567}, {"JPY", 1034444444444444459008.0}}));
}

TEST_F(Publish, LaterSources_FillWhatEarlierLack) {
  const Rates euro = published({kEuro});
  const Rates dollar = published({kDollar});
  Rates both = euro;
  both.insert(dollar.begin(), dollar.end());
  EXPECT_EQ(published({kEuro, kDollar}), both);
  EXPECT_EQ(both.size(), 339U);
  const std::string csv =
      "\xEF\xBB\xBF"
      "code,rate\r\n eur , 0.5 \r\n\r\nxyz,7e-3";
  const Rates filled = published({"-", kEuro}, csv);
  EXPECT_EQ(filled.at("EUR"), 0.5);
  EXPECT_EQ(filled.at("XYZ"), 0.007);
  EXPECT_EQ(filled.at("GBP"), euro.at("GBP"));
}

TEST_F(Publish, Answer_NamesDaysAndSources) {
  const Dictionary answer = answerOf(publish({kEuro, kDollar}).output);
  EXPECT_EQ(*answer.find("source"),
            Value("eur-reference-2026-09-11.xml 2026-09-11, usd-2026-09-29.json 2026-09-29"));
  EXPECT_EQ(answer.find("updated")->number()->doubleValue(),
            Date::fromIsoText("2026-09-11T00:00:00Z")->secondsSince1970());
}

TEST_F(Publish, Source_NamesAreText) {
  const std::string source = scratch / "[\xFF]";
  writeFile(source, "eur,1\n");
  EXPECT_TRUE(
      answerOf(publish({source}).output).find("source")->string()->starts_with("[\uFFFD] "));
}

TEST_F(Publish, Csv_Refused) {
  expectRefused({"-"}, "eur,1\ngbp,1,5\n", {"standard input", "line 2", "gbp", "1,5"});
  expectRefused({"-"}, "eur,1\ngbp\n", {"line 2"});
  expectRefused({"-"}, "eur,1\n\ngbp,0\n", {"line 3", "GBP", "positive"});
  expectRefused({"-"}, "gbp,-1\n", {"line 1", "GBP"});
  expectRefused({"-"}, "gbp,1e999\n", {"line 1", "GBP", "finite"});
  expectRefused({"-"}, "gbp,nan\n", {"line 1", "GBP", "finite"});
  expectRefused({"-"}, "gbp,1e-320\n", {"line 1", "GBP", "reciprocal"});
  expectRefused({"-"}, "gbp,\n", {"line 1", "gbp"});
  expectRefused({"-"}, "g\"p,1\n", {"line 1", "g\"p", "code"});
  expectRefused({"-"}, ",1\n", {"line 1", "code"});
  expectRefused({"-"}, "gbp,1\nGBP,1\n", {"line 2", "GBP", "line 1"});
  expectRefused({"-"}, "usd,1.1\n", {"line 1", "USD"});
  expectRefused({"-"}, "code,rate\n", {"no rates"});
  expectRefused({"-"}, std::string((std::size_t{16} << 20) + 1, ' '), {"too large"});
}

TEST_F(Publish, Json_Refused) {
  expectRefused({"-"}, "{\"usd\": {\n\"eur\": 1,\n\"gbp\": 0}}", {"line 3", "GBP", "positive"});
  expectRefused({"-"}, "{\"usd\": {\n\"gbp\": -0.5}}", {"line 2", "GBP"});
  expectRefused({"-"}, "{\"usd\": {\n\"gbp\": 1e400}}", {"line 2", "gbp", "1e400"});
  expectRefused({"-"}, "{\"usd\": {\n\n\"gbp\": \"1\"}}", {"line 3", "gbp"});
  expectRefused({"-"}, "{\"usd\": {\"gbp\": null}}", {"line 1", "gbp"});
  expectRefused({"-"}, "{\"usd\": {\"gbp\": 1,\n\"GBP\": 1}}", {"line 2", "GBP"});
  expectRefused({"-"}, "{\"usd\": {\"usd\": 1.5}}", {"line 1", "USD"});
  expectRefused({"-"}, "{\"usd\": {\"gbp\": 1}, \"usd\": {}}", {"line 1", "twice"});
  expectRefused({"-"}, "{\"usd\": {\"gbp\": 1}} x", {"standard input"});
  expectRefused({"-"}, "{\"usd\": {\"gbp\": 1}", {"line 1"});
  expectRefused({"-"}, "{\"date\": \"2026-02-30\",\n\"usd\": {\"gbp\": 1}}",
                {"2026-02-30", "date"});
  expectRefused({"-"}, "{\"eur\": {\"gbp\": 1}}", {"usd"});
  expectRefused({"-"}, "{\"usd\": [1]}", {"line 1"});
}

TEST_F(Publish, Xml_Refused) {
  const auto xml = [](const std::string& cubes) {
    return "<e><Cube><Cube time='2026-09-11'>\n" + cubes + "</Cube></Cube></e>";
  };
  const std::string dollar = "<Cube currency='USD' rate='1.1'/>\n";
  expectRefused({"-"}, xml("<Cube currency='JPY' rate='178'/>\n"), {"standard input", "USD"});
  expectRefused({"-"}, xml(dollar + "<Cube currency='JPY' rate='0'/>"), {"line 3", "JPY"});
  expectRefused({"-"}, xml(dollar + "<Cube currency='JPY' rate='x'/>"), {"line 3", "JPY"});
  expectRefused({"-"}, xml(dollar + "<Cube currency='JPY'/>"), {"line 3", "JPY"});
  expectRefused({"-"}, xml(dollar + "<Cube rate='1'/>"), {"line 3"});
  expectRefused({"-"}, xml("<Cube currency='USD' rate='0'/>"), {"line 2", "USD"});
  expectRefused({"-"},
                xml("<Cube currency='USD' rate='1e-300'/><Cube currency='JPY' rate='1e300'/>"),
                {"line 2", "JPY", "finite"});
  expectRefused({"-"}, xml(dollar + "<Cube currency='EUR' rate='1'/>"), {"line 3", "EUR"});
  expectRefused({"-"}, xml(dollar + "<Cube time='2026-09-10'/>"), {"line 3", "day"});
  expectRefused({"-"}, "<e><Cube time='yesterday'/></e>", {"line 1", "yesterday"});
  expectRefused({"-"}, "<e>\n<Cube>", {"line 2"});
  expectRefused({"-"}, "<!DOCTYPE e [<!ENTITY a 'b'>]><e/>", {"line 1", "DOCTYPE"});
}

TEST_F(Publish, MaxAge) {
  const std::string source = scratch / "source.json";
  const auto withDay = [](const std::string& day) {
    return "{\"date\": \"" + day + "\", \"usd\": {\"eur\": 0.85}}";
  };
  published({"--max-age", "3", "-"}, withDay(dayBefore(2)));
  published({"--max-age", "0", "-"}, withDay(dayBefore(0)));
  published({"-"}, withDay("1999-01-04"));
  expectRefused({"--max-age", "3", "-"}, withDay(dayBefore(5)), {dayBefore(5), "5 days"});
  // Somewhere it is tomorrow already; but never the day after.
  published({"--max-age", "0", "-"}, withDay(dayBefore(-1)));
  expectRefused({"--max-age", "3", "-"}, withDay(dayBefore(-3)), {dayBefore(-3), "future"});
  expectRefused({"-"}, withDay("2126-01-01"), {"2126-01-01", "future"});
  // Any of the sources, whether or not it gives anything to the result.
  expectRefused({"--max-age", "3", "-", kDollar}, "eur,1\ncny,1\n", {"usd-2026-09-29.json"});
}

TEST_F(Publish, MaxAge_OfRatesWithoutDay_IsThatOfTheFile) {
  const std::string source = scratch / "rates.csv";
  writeFile(source, "eur,0.85\n");
  published({"--max-age", "1", source});
  std::filesystem::last_write_time(
      source, std::filesystem::file_time_type::clock::now() - std::chrono::hours(24 * 4));
  const CommandResult result = publish({"--max-age", "1", source});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_NE(result.errors.find(dayBefore(4)), std::string::npos) << result.errors;
}

TEST_F(Publish, MinCount) {
  EXPECT_EQ(published({"--min-count", "9", kEuro}).size(), 9U);
  expectRefused({"--min-count", "10", kEuro}, "", {"9 codes", "10"});
  expectRefused({"--min-count", "010", kEuro}, "", {"9 codes", "10"});
}

TEST_F(Publish, Codes_AsManyAsTheLibraryReads) {
  // An object of six members' values and three for each rate.
  constexpr std::size_t kMost = (limits::kJsonValues - 6) / 3;
  std::string csv;
  for (std::size_t i = 0; i < kMost; ++i) csv += "a" + std::to_string(i) + ",1\n";
  EXPECT_EQ(published({"-"}, csv).size(), kMost);
  expectRefused({"-"}, csv + "usd,1\n", {"codes", std::to_string(kMost)});
}

TEST_F(Publish, MaxJump) {
  const auto jump = [&](const std::string& percent, const std::string& csv,
                        std::vector<std::string> more = {}) {
    EXPECT_EQ(publish({"--output", output, "-"}, "eur,100\ngbp,100\n").exitCode, 0);
    more.insert(more.end(), {"--output", output, "--max-jump", percent, "-"});
    CommandResult result = publish(more, csv);
    const Rates now = ratesOf(readFile(output));
    EXPECT_EQ(now.at("GBP") != 100, result.exitCode == 0);
    return result;
  };
  EXPECT_EQ(jump("10", "eur,100\ngbp,110\n").exitCode, 0);
  EXPECT_EQ(jump("10", "gbp,90\n").exitCode, 0);
  for (const std::string rate : {"110.1", "89.9", "1e-300", "1e300"}) {
    const CommandResult result = jump("10", "eur,100\ngbp," + rate + "\n");
    EXPECT_EQ(result.exitCode, 2);
    for (const std::string part : {"line 2", "GBP", "100", "10 %"}) {
      EXPECT_NE(result.errors.find(part), std::string::npos) << part << " in " << result.errors;
    }
  }
  EXPECT_EQ(jump("10", "gbp,500\n", {"--force"}).exitCode, 0);
  EXPECT_EQ(jump("0", "gbp,100.00001\n").exitCode, 2);
  EXPECT_EQ(jump("10", "gbp,1e308\n", {"--force"}).exitCode, 0);
  EXPECT_EQ(publish({"--output", output, "--max-jump", "10", "-"}, "gbp,1.7e308\n").exitCode, 2);
  // A published whole number beyond 64 bits is compared like any other.
  const std::string large = "gbp,1034444444444444444470\n";
  EXPECT_EQ(jump("0", large, {"--force"}).exitCode, 0);
  EXPECT_EQ(publish({"--output", output, "--max-jump", "0", "-"}, large).exitCode, 0);
}

TEST_F(Publish, MaxJump_WithNothingToCompare) {
  EXPECT_EQ(publish({"--output", output, "--max-jump", "1", "-"}, "eur,2\n").exitCode, 0);
  expectRefused({"--max-jump", "1", "-"}, "eur,1\n", {output, "--force"});
  EXPECT_EQ(publish({"--output", output, "--max-jump", "1", "--force", "-"}, "eur,1\n").exitCode,
            0);
  const CommandResult result = publish({"--max-jump", "1", "-"}, "eur,1\n");
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(result.output, "");
}

TEST_F(Publish, Output_IsReplacedWholeAndKeepsItsMode) {
  EXPECT_EQ(publish({"--output", output, kEuro}).exitCode, 0);
  struct stat status {};
  ASSERT_EQ(::stat(output.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0644U);
  EXPECT_EQ(readFile(output), publish({kEuro}).output);
  ASSERT_EQ(::chmod(output.c_str(), 0640), 0);
  EXPECT_EQ(publish({"--output", output, kDollar}).exitCode, 0);
  EXPECT_EQ(ratesOf(readFile(output)).size(), 339U);
  ASSERT_EQ(::stat(output.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0640U);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(scratch.path()), {}), 1);
}

TEST_F(Publish, Output_KeepsOwnerAndGroup) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root may give files away";
  writeFile(output, "old");
  ASSERT_EQ(::chown(output.c_str(), 1, 2), 0);
  // A root that may not either.
  const std::string setpriv = "/usr/bin/setpriv";
  const CommandResult result =
      runCommand({setpriv, "--bounding-set=-chown", kProgram, "--output", output, kEuro});
  EXPECT_EQ(result.exitCode, 4) << result.errors;
  EXPECT_NE(result.errors.find("owner and group"), std::string::npos) << result.errors;
  EXPECT_EQ(readFile(output), "old");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(scratch.path()), {}), 1);
  EXPECT_EQ(publish({"--output", output, kEuro}).exitCode, 0);
  struct stat status {};
  ASSERT_EQ(::stat(output.c_str(), &status), 0);
  EXPECT_EQ(status.st_uid, 1U);
  EXPECT_EQ(status.st_gid, 2U);
}

TEST_F(Publish, Output_Unchanged_IsLeftAlone) {
  EXPECT_EQ(publish({"--output", output, kEuro}).exitCode, 0);
  struct stat before {};
  struct stat after {};
  ASSERT_EQ(::stat(output.c_str(), &before), 0);
  EXPECT_EQ(publish({"--output", output, kEuro}).exitCode, 0);
  ASSERT_EQ(::stat(output.c_str(), &after), 0);
  EXPECT_EQ(before.st_ino, after.st_ino);
}

TEST_F(Publish, Output_ThatCannotBeWritten) {
  EXPECT_EQ(publish({"--output", scratch / "missing/rates.json", kEuro}).exitCode, 4);
  EXPECT_EQ(publish({"--output", scratch.path(), kEuro}).exitCode, 4);
  writeFile(scratch / "target", "old");
  std::filesystem::create_symlink(scratch / "target", output);
  EXPECT_EQ(publish({"--output", output, kEuro}).exitCode, 4);
  EXPECT_EQ(readFile(scratch / "target"), "old");
  // Standard output that takes nothing.
  const CommandResult full =
      runCommand({"/bin/sh", "-c", "exec \"$0\" \"$1\" >/dev/full", kProgram, kEuro});
  EXPECT_EQ(full.exitCode, 4);
  EXPECT_NE(full.errors.find("standard output"), std::string::npos);
}

TEST_F(Publish, Use) {
  for (const auto& words : std::vector<std::vector<std::string>>{{},
                                                                 {"--colour", kEuro},
                                                                 {"--max-age", kEuro},
                                                                 {"--max-age", "-1", kEuro},
                                                                 {"--max-age", "x", kEuro},
                                                                 {"--min-count", "-1", kEuro},
                                                                 {"--max-jump", "nan", kEuro},
                                                                 {"--max-age", "0x3", kEuro},
                                                                 {"--min-count", "9e9", kEuro},
                                                                 {"--output", "--force", kEuro},
                                                                 {"-", "-"},
                                                                 {"--output"}}) {
    const CommandResult result = publish(words);
    EXPECT_EQ(result.exitCode, 2) << result.output;
    EXPECT_EQ(result.output, "");
  }
  // An option whose value is missing takes no source for it.
  writeFile(output, "eur,1\n");
  for (const std::string option : {"--output", "--max-age", "--min-count", "--max-jump"}) {
    for (const auto& words : {std::vector{option + "=", output, kEuro}, {option, "", output}}) {
      const CommandResult result = publish(words);
      EXPECT_EQ(result.exitCode, 2);
      EXPECT_NE(result.errors.find(option), std::string::npos) << result.errors;
    }
  }
  EXPECT_EQ(readFile(output), "eur,1\n");
  EXPECT_EQ(publish({"--output", "-", kEuro}).output, publish({kEuro}).output);
  expectRefused({scratch / "missing.csv"}, "", {"missing.csv", "No such file"});
  expectRefused({scratch.path()}, "", {scratch.path()});
  const CommandResult help = publish({"--help"});
  EXPECT_EQ(help.exitCode, 0);
  for (const std::string option :
       {"--output", "--max-age", "--min-count", "--max-jump", "--force", "SOURCE"}) {
    EXPECT_NE(help.output.find(option), std::string::npos) << option;
  }
  EXPECT_EQ(publish({"--version"}).exitCode, 0);
}

}  // namespace
}  // namespace fexora::test
