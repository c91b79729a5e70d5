// The tables that are made by scripts; that they hold what they are made from is the scripts' own
// check.
#include <algorithm>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "fexora/platform/plist/PropertyListReader.h"
#include "fexora/resources/BundledRatesTable.h"
#include "fexora/resources/EmbeddedCatalogue.h"

#include "tests/support/Command.h"
#include "tests/support/ScratchFolder.h"

namespace fexora::test {
namespace {

const std::string kResources = FEXORA_TEST_SOURCE_DIR "/fexora/resources/";

TEST(Resources, GeneratedFiles_AreUpToDate) {
  for (const char* script : {"make-catalogue", "make-bundled-rates", "make-names", "make-signs"}) {
    runPython(std::string("tools/") + script, {"--check"});
  }
}

TEST(Resources, PlistAndEmbeddedCodes_AreTheSameAndKnowTheBundle) {
  const PlistResult read = readPropertyList(readFile(kResources + "Currency.plist"));
  ASSERT_TRUE(read.ok()) << read.error;
  const auto embedded = embeddedCatalogue();
  EXPECT_EQ(read.value, Value(Array(embedded.begin(), embedded.end())));
  const std::set<std::string_view> known(embedded.begin(), embedded.end());
  EXPECT_EQ(bundledRatesTable().size(), 339U);
  for (const auto& [code, rate] : bundledRatesTable()) EXPECT_TRUE(known.contains(code)) << code;
}

TEST(Resources, Currencies_StandByKindThenCode) {
  std::vector<std::string> kinds;
  std::string last;
  std::istringstream in(readFile(kResources + "currencies.tsv"));
  for (std::string line; std::getline(in, line);) {
    if (line.starts_with('#')) continue;
    std::istringstream cells(line);
    std::string code;
    std::string kind;
    cells >> code >> kind;
    const bool begins = kinds.empty() || kinds.back() != kind;
    if (begins) kinds.push_back(kind);
    EXPECT_TRUE(begins || kind == "traded" || last < code) << code;
    last = code;
  }
  EXPECT_EQ(kinds,
            (std::vector<std::string>{"traded", "iso", "local", "metal", "crypto", "withdrawn"}));
}

}  // namespace
}  // namespace fexora::test
