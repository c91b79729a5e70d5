// Values, numbers and notifications at their edges: what is assigned from itself, ended from
// inside, or thrown.
#include <cmath>
#include <limits>
#include <memory>
#include <stdexcept>
#include <type_traits>

#include <gtest/gtest.h>

#include "fexora/platform/values/NotificationCenter.h"
#include "fexora/platform/values/Value.h"

#include "tests/support/VirtualPlatform.h"

namespace fexora {
namespace {

static_assert(!std::is_constructible_v<NSNumber, char> && !std::is_constructible_v<Value, char>);
static_assert(!std::is_constructible_v<NSNumber, wchar_t> &&
              !std::is_constructible_v<Value, char8_t>);
static_assert(std::is_constructible_v<Value, std::uint8_t>);

TEST(Value, TakesAPartOfWhatItAloneHolds) {
  const std::string text(40, 'x');
  Value list(Array{Array{text}, 1});
  list = list.array()->front();
  list = list.array()->front();
  EXPECT_EQ(*list.string(), text);
  Value dictionary(Dictionary{{"a", Dictionary{{"b", text}}}});
  dictionary = *dictionary.dictionary()->find("a");
  dictionary = *dictionary.dictionary()->find("b");
  EXPECT_EQ(*dictionary.string(), text);
}

TEST(NSNumber, NearestFloat_UpToHalfAStepBeyondTheLargest) {
  constexpr float kLargest = std::numeric_limits<float>::max();
  const double half = std::ldexp(1.0, 103);  // half the distance between the largest floats
  EXPECT_EQ(NSNumber(3.4028235e38).floatValue(), kLargest);
  EXPECT_EQ(NSNumber(-3.4028235e38).floatValue(), -kLargest);
  EXPECT_TRUE(std::isinf(NSNumber(static_cast<double>(kLargest) + half).floatValue()));
  EXPECT_TRUE(std::isnan(NSNumber(std::nan("")).floatValue()));
}

// Owns an observation, as a window does that observes until it is closed.
struct Owner {
  NotificationCenter::Token token;
};

TEST(NotificationCenter, ObservationsThatEndEachOther) {
  NotificationCenter center;
  int calls = 0;
  const auto count = [&] { ++calls; };
  auto inner = std::make_shared<Owner>();
  inner->token = center.addObserver("x", count);
  auto outer = center.addObserver("x", [inner = std::move(inner)] {});
  const auto last = center.addObserver("x", count);
  outer = {};  // ends its function, which ends the first one
  center.postNotification("x");
  EXPECT_EQ(calls, 1);

  auto owner = std::make_shared<Owner>();
  owner->token = center.addObserver("x", [owner] { owner->token = {}; });
  const std::weak_ptr<Owner> alive = owner;
  owner.reset();
  center.postNotification("x");
  EXPECT_TRUE(alive.expired()) << "it ended from inside its own function";
  EXPECT_EQ(calls, 2);

  const auto throws =
      center.addObserver("x", [] { throw std::runtime_error("thrown on purpose"); });
  const auto after = center.addObserver("x", count);
  test::RecordingLog log;
  Log* const before = std::exchange(Platform::process().log, &log);
  center.postNotification("x");
  Platform::process().log = before;
  EXPECT_EQ(calls, 4);
  EXPECT_EQ(log.count("An observer of a notification threw: thrown on purpose"), 1);
}

}  // namespace
}  // namespace fexora
