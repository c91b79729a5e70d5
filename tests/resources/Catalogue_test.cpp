// The tables that are made by scripts; that they hold what they are made from is the scripts' own
// check.
#include <set>
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
  const std::string otherData = runPython("tools/make-tables", {"--check"});
  if (!otherData.empty()) GTEST_SKIP() << otherData;
}

TEST(Resources, PlistAndEmbeddedCodes_AreTheSameAndKnowTheBundle) {
  const PlistResult read = readPropertyList(readFile(kResources + "Currency.plist"));
  ASSERT_TRUE(read.ok()) << read.error;
  const auto embedded = embeddedCatalogue();
  EXPECT_EQ(read.value, Value(Array(embedded.begin(), embedded.end())));
  const std::set<std::string_view> known(embedded.begin(), embedded.end());
  EXPECT_EQ(bundledRatesTable().size(), 339U);
  for (const BundledRate& rate : bundledRatesTable()) {
    const std::string_view code = rate.code;
    EXPECT_TRUE(known.contains(code)) << code;
  }
}

// After the ten most traded ones each kind stands by code: it begins where the codes fall, but for
// the metals.
TEST(Resources, Currencies_StandByKindThenCode) {
  const auto table = embeddedCatalogue();
  const std::vector<std::string_view> embedded(table.begin(), table.end());
  std::vector<std::string_view> begins;
  for (std::size_t i = 10; i < embedded.size(); ++i) {
    if (i == 10 || embedded[i] < embedded[i - 1]) begins.push_back(embedded[i]);
  }
  EXPECT_EQ(begins, (std::vector<std::string_view>{"AED", "CNH", "1INCH", "ANG"}));
}

}  // namespace
}  // namespace fexora::test
