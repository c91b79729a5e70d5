// Every truncation of real stores, and a sample of other damage; the long form is
// tests/reliability/damaged-stores.
#include "tests/reliability/Damage.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/plist/PropertyListReader.h"

#include "tests/support/Command.h"
#include "tests/support/VirtualPlatform.h"

namespace fexora::test {
namespace {

TEST(Damage, EveryTruncation_IsRefused) {
  const std::string xml = realStore(4);
  for (const std::string& whole : {xml, inBinary(xml)}) {
    ASSERT_TRUE(readPropertyList(whole).ok());
    DamageJudge judge;
    // XML without its last line end is whole.
    for (std::size_t size = 0; size + 1 < whole.size(); ++size) judge.meet(whole.substr(0, size));
    EXPECT_EQ(judge.report().fault, "");
    EXPECT_EQ(judge.report().read, 0U);
  }
}

TEST(Damage, EveryTruncationOfAFullStore_IsRefusedByTheReader) {
  const std::string xml = realStore(339);
  for (const std::string& whole : {xml, inBinary(xml)}) {
    // A prime step: with the full run of the small store all kinds of places are met.
    for (std::size_t size = 0; size + 1 < whole.size(); size += 31) {
      ASSERT_FALSE(readPropertyList(std::string_view(whole).substr(0, size)).ok()) << size;
    }
  }
}

TEST(Damage, EachByteFlipped_IsTakenOrRefusedWhole) {
  const std::string xml = realStore(2);
  Damager damager(20261124);
  for (const std::string& whole : {xml, inBinary(xml)}) {
    DamageJudge judge;
    for (std::size_t at = 0; at < whole.size(); ++at) {
      std::string bytes = whole;
      bytes[at] = static_cast<char>(static_cast<unsigned char>(bytes[at]) ^ (1U << (at % 8)));
      judge.meet(bytes);
    }
    for (int i = 0; i < 3000; ++i) judge.meet(damager.damaged(whole, xml));
    EXPECT_EQ(judge.report().fault, "");
    EXPECT_GT(judge.report().read, 100U);
    EXPECT_GT(judge.report().refused, 100U);
  }
}

// The file that takes most: as many keys as the limits allow, each just too long to be held in
// place.
TEST(Damage, WorstFile_StaysWithinTheBoundOnMemory) {
  const TestContainer container;
  std::string bytes = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>";
  for (int key = 1'000'000'000; bytes.size() + 100 < limits::kStoreFileBytes; ++key) {
    bytes += "<key>000000" + std::to_string(key) + "</key><true/>";
  }
  bytes += "</dict></plist>";
  writeFile(container.file(), bytes);
  const auto run =
      runCommand({std::string(FEXORA_TEST_BINARY_DIR) + "/bin/reliability_saver", "load"});
  EXPECT_EQ(run.output, "Fraction 3\n") << "it was read, not refused: " << run.errors;
  rusage usage{};
  getrusage(RUSAGE_CHILDREN, &usage);
  const auto most = static_cast<std::size_t>(usage.ru_maxrss) * 1024;
  RecordProperty("MiB", static_cast<int>(most >> 20U));
  EXPECT_GT(most, bytes.size());
  // Sanitizers take memory of their own.
  EXPECT_LT(most, limits::kStoreMemoryBytes * (FEXORA_TEST_SANITIZED ? 16 : 1));
}

}  // namespace
}  // namespace fexora::test
