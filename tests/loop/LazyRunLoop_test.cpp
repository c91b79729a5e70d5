#include "fexora/platform/loop/LazyRunLoop.h"

#include <chrono>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "fexora/platform/loop/WakeUp.h"

#include "examples/poll/PollLoop.h"
#include "tests/support/VirtualPlatform.h"

namespace fexora {
namespace {

void readInside(RunLoop& loop) {
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

// As a modal dialog in a completion does. The loop of the sample keeps to the same.
TEST(RunLoop, RunInsideOfAFunction_BringsWhatIsPostedAndReadable) {
  PollLoop poll;
  for (RunLoop* const loop : {&RunLoop::process(), static_cast<RunLoop*>(&poll)}) {
    std::string told;
    bool done = false;
    loop->post([&] {
      loop->runUntil([&] { return told == "b"; });
      loop->post([&] { told += 'c'; });
      loop->runUntil([&] { return told == "bc"; });
      done = true;
    });
    test::RecordingLog log;
    Log* const before = std::exchange(Platform::process().log, &log);
    loop->post([] { throw std::runtime_error("thrown on purpose"); });
    loop->post([&] { told += 'b'; });
    loop->runUntil([&] { return done; });
    Platform::process().log = before;
    EXPECT_EQ(told, "bc");
    EXPECT_EQ(log.count("threw: thrown on purpose"), 1);
    readInside(*loop);
  }
}

}  // namespace
}  // namespace fexora
