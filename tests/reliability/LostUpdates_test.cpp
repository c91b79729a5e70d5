// What two processes lose to each other by the protocol, and what is saved when they look again at
// the end of each skip period. On a virtual clock; tests/reliability/lost-updates measures it.
#include <gtest/gtest.h>

#include "fexora/fexora.h"
#include "fexora/platform/plist/PropertyListReader.h"

#include "tests/support/UnflushedFiles.h"
#include "tests/support/VirtualPlatform.h"

namespace fexora::test {
namespace {

// Two stores as in two processes, on one clock.
class Rivals {
 public:
  explicit Rivals(bool reconciling) {
    second_.platform.loop = &first_.loop;
    a.setReconcilesAfterSkip(reconciling);
    b.setReconcilesAfterSkip(reconciling);
    pass(5);
  }
  void save(StoreManager& store, const std::string& key) {
    Dictionary content = store.ud();
    content.set(key, 1);
    store.setUd(content);
    store.synchronize();
    // Both watches see each save.
    first_.watch.change();
    second_.watch.change();
  }
  void pass(double seconds) { first_.loop.advance(seconds); }
  Dictionary file() const {
    return *readPropertyList(readFile(container_.file())).value.dictionary();
  }

 private:
  TestContainer container_;
  UnflushedFiles files_;
  VirtualPlatform first_{files_};
  VirtualPlatform second_{files_};

 public:
  StoreManager a{first_.platform};
  StoreManager b{second_.platform};
};

TEST(LostUpdates, SavedIntoTheOthersSkipPeriod_AreLostUnlessItReconciles) {
  for (const bool reconciling : {false, true}) {
    Rivals rivals(reconciling);
    rivals.save(rivals.a, "a");
    rivals.pass(0.5);
    rivals.save(rivals.b, "b");  // A does not see it
    rivals.pass(2);
    rivals.save(rivals.a, "c");
    EXPECT_NE(rivals.file().find("a"), nullptr);
    EXPECT_EQ(rivals.file().find("b") != nullptr, reconciling);
    EXPECT_NE(rivals.file().find("c"), nullptr);
    rivals.pass(5);
    EXPECT_EQ(rivals.a.ud(), rivals.file()) << "quiet: both hold the file's content";
    EXPECT_EQ(rivals.b.ud(), rivals.file());
  }
}

TEST(LostUpdates, OfTwoSavesWithinOneSecond_TheLaterWinsEitherWay) {
  for (const bool reconciling : {false, true}) {
    Rivals rivals(reconciling);
    rivals.save(rivals.a, "a");
    rivals.pass(0.25);
    rivals.save(rivals.b, "b");
    rivals.pass(0.25);
    rivals.save(rivals.a, "c");  // from what A had before
    EXPECT_EQ(rivals.file().find("b"), nullptr);
    rivals.pass(5);
    // B missed A's second save; without reconciling it holds on to its own.
    EXPECT_EQ(rivals.b.ud() == rivals.file(), reconciling);
    EXPECT_EQ(rivals.a.ud(), rivals.file());
  }
}

TEST(LostUpdates, ReconcilingStores_ComeToRest) {
  Rivals rivals(true);
  for (int i = 0; i < 40; ++i) {
    rivals.save(i % 3 == 0 ? rivals.a : rivals.b, "k" + std::to_string(i));
    rivals.pass(0.1 * (i % 7));
  }
  rivals.pass(10);
  const Dictionary quiet = rivals.file();
  EXPECT_EQ(rivals.a.ud(), quiet);
  EXPECT_EQ(rivals.b.ud(), quiet);
  rivals.pass(100);
  EXPECT_EQ(rivals.file(), quiet) << "nobody saves again";
}

}  // namespace
}  // namespace fexora::test
