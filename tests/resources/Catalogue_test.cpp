// The table of currencies, the scripts and what they made agree with each other.
#include <algorithm>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "fexora/platform/plist/PropertyListReader.h"
#include "fexora/platform/text/NumberText.h"
#include "fexora/resources/BundledRatesTable.h"
#include "fexora/resources/EmbeddedCatalogue.h"

#include "tests/support/Command.h"
#include "tests/support/ScratchFolder.h"

namespace fexora::test {
namespace {

const std::string kResources = FEXORA_TEST_SOURCE_DIR "/fexora/resources/";

std::vector<std::string> embedded() {
  return {embeddedCatalogue().begin(), embeddedCatalogue().end()};
}

// Kind and name by code, read without the scripts.
std::map<std::string, std::pair<std::string, std::string>> table() {
  std::map<std::string, std::pair<std::string, std::string>> rows;
  std::istringstream in(readFile(kResources + "currencies.tsv"));
  for (std::string line; std::getline(in, line);) {
    if (line.starts_with('#')) continue;
    std::istringstream cells(line);
    std::string code;
    std::string kind;
    std::string name;
    std::getline(cells, code, '\t');
    std::getline(cells, kind, '\t');
    std::getline(cells, name, '\t');
    EXPECT_TRUE(rows.try_emplace(code, kind, name).second) << code;
  }
  return rows;
}

// The snapshot's members are one a line: "code": number.
std::map<std::string, double> snapshot() {
  std::map<std::string, double> rates;
  std::istringstream in(readFile(kResources + "data/usd-2026-09-29.json"));
  for (std::string line; std::getline(in, line);) {
    const std::size_t colon = line.find("\": ");
    const std::size_t quote = line.find('"');
    if (colon == std::string::npos || quote == colon) continue;
    std::string code = line.substr(quote + 1, colon - quote - 1);
    for (char& c : code) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    std::string number = line.substr(colon + 3);
    if (number.ends_with(',')) number.pop_back();
    if (const auto rate = parseDouble(number)) rates.emplace(code, *rate);
  }
  return rates;
}

TEST(Catalogue, GeneratedFiles_AreUpToDate) {
  runPython("tools/make-catalogue", {"--check"});
  runPython("tools/make-bundled-rates", {"--check"});
}

TEST(Catalogue, PlistAndEmbeddedCodes_AreTheSame) {
  const PlistResult read = readPropertyList(readFile(kResources + "Currency.plist"));
  ASSERT_TRUE(read.ok()) << read.error;
  ASSERT_NE(read.value.array(), nullptr);
  std::vector<std::string> codes;
  for (const Value& code : *read.value.array()) {
    ASSERT_NE(code.string(), nullptr);
    codes.push_back(*code.string());
  }
  EXPECT_EQ(codes, embedded());
}

TEST(Catalogue, Order_IsByKindThenCode) {
  const auto rows = table();
  const std::vector<std::string> codes = embedded();
  ASSERT_EQ(codes.size(), rows.size());
  EXPECT_EQ(std::vector<std::string>(codes.begin(), codes.begin() + 4),
            (std::vector<std::string>{"USD", "EUR", "JPY", "GBP"}));
  std::map<std::string, std::vector<std::string>> byKind;
  std::vector<std::string> kinds;
  for (const std::string& code : codes) {
    ASSERT_TRUE(rows.contains(code)) << code;
    const auto& [kind, name] = rows.at(code);
    EXPECT_FALSE(name.empty()) << code;
    if (kinds.empty() || kinds.back() != kind) kinds.push_back(kind);
    byKind[kind].push_back(code);
  }
  EXPECT_EQ(kinds,
            (std::vector<std::string>{"traded", "iso", "local", "metal", "crypto", "withdrawn"}));
  for (const auto& [kind, block] : byKind) {
    if (kind != "traded") {
      EXPECT_TRUE(std::is_sorted(block.begin(), block.end())) << kind;
    }
  }
}

TEST(Catalogue, EveryCodeOfTheService_IsKnown) {
  const std::vector<std::string> codes = embedded();
  const std::set<std::string> known(codes.begin(), codes.end());
  for (const auto& [code, rate] : snapshot()) EXPECT_TRUE(known.contains(code)) << code;
}

TEST(BundledRatesTable, HoldsTheSnapshotBitForBit) {
  const auto rates = snapshot();
  EXPECT_EQ(rates.size(), 339U);
  ASSERT_EQ(bundledRatesTable().size(), rates.size());
  for (const auto& [code, rate] : bundledRatesTable()) {
    const auto found = rates.find(std::string(code));
    ASSERT_NE(found, rates.end()) << code;
    EXPECT_EQ(rate, found->second) << code;
  }
  EXPECT_EQ(bundledRatesDate().isoText(), "2026-09-29T00:00:00Z");
}

}  // namespace
}  // namespace fexora::test
