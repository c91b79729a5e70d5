#include "fexora/platform/loop/LazyRunLoop.h"

#include <chrono>
#include <string>

#include <gtest/gtest.h>

#include "fexora/platform/loop/WakeUp.h"

#include "tests/support/VirtualRunLoop.h"

namespace fexora {
namespace {

TEST(LazyRunLoop, OpensItsModuleWhenSomethingIsToBeCalledLater) {
  test::VirtualRunLoop real;
  int opened = 0;
  LazyRunLoop loop([&] {
    ++opened;
    return &real;
  });
  const double monotonic = loop.monotonicSeconds();
  EXPECT_GE(loop.monotonicSeconds(), monotonic);
  const auto wall = std::chrono::system_clock::now().time_since_epoch();
  EXPECT_NEAR(loop.wallSeconds(), std::chrono::duration<double>(wall).count(), 60);
  EXPECT_EQ(opened, 0) << "the time needs no loop";
  int called = 0;
  loop.post([&] { ++called; });
  const auto timer = loop.scheduleTimer(1.0, [&] { ++called; });
  EXPECT_TRUE(timer->isValid());
  real.advance(1.0);
  EXPECT_EQ(called, 2);
  loop.runUntil([&] { return called == 2; });
  EXPECT_EQ(opened, 1);
}

TEST(LazyRunLoop, WithoutItsModule_CallsNothing) {
  LazyRunLoop loop([]() -> RunLoop* { return nullptr; });
  bool called = false;
  loop.post([&] { called = true; });
  const auto timer = loop.scheduleTimer(0.0, [&] { called = true; });
  EXPECT_FALSE(timer->isValid());
  timer->invalidate();
  EXPECT_EQ(loop.watchReadable(0, [&] { called = true; }), nullptr);
  loop.runUntil([] { return false; });
  EXPECT_FALSE(called);
}

// As a modal dialog in a completion does.
TEST(RunLoop, RunInsideOfAFunction_BringsWhatIsPostedAndReadable) {
  RunLoop& loop = RunLoop::process();
  std::string told;
  bool done = false;
  loop.post([&] {
    loop.post([&] { told += 'c'; });
    loop.runUntil([&] { return told.size() == 2; });
    done = true;
  });
  loop.post([&] { told += 'b'; });
  loop.runUntil([&] { return done; });
  EXPECT_EQ(told, "bc");

  const WakeUp wake;
  int readings = 0;
  const auto watch = loop.watchReadable(wake.descriptor(), [&] {
    wake.clear();
    if (++readings > 1) return;
    wake.wake();
    loop.runUntil([&] { return readings > 1; });
  });
  wake.wake();
  loop.runUntil([&] { return readings > 1; });
  EXPECT_EQ(readings, 2);
}

}  // namespace
}  // namespace fexora
