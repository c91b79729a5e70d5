// A display as the person before it meets it: waits for a window to be mapped and for what is
// painted in it, and presses keys. An X client of its own, so that any toolkit's program is seen
// alike; for one that nothing else uses. Clock: std::chrono::steady_clock.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

#include <xcb/damage.h>
#include <xcb/xcb.h>

namespace fexora::bench {

using Clock = std::chrono::steady_clock;

// Keys by their place, as X numbers them on the usual keyboard.
enum class Key : std::uint8_t { one = 10, two = 11, backspace = 22 };

class Display {
 public:
  Display();  // ends the program, with a reason, where there is no display to measure on
  ~Display();
  Display(const Display&) = delete;
  Display& operator=(const Display&) = delete;

  // The next window that a program maps and that is no menu or tip; none after `limit`.
  std::optional<xcb_window_t> mapped(std::chrono::milliseconds limit);
  // Forgets what has happened until now.
  void forget();
  // Keys go to this window from now on; 0: to none.
  void focus(xcb_window_t window);
  void press(Key key);
  void turnWheelDown();

  // From now on this window's painting is told, and only this one's; moves the pointer into its
  // middle, where the wheel turns.
  void watch(xcb_window_t window);
  // When the last of what is now being painted there appeared: the first change within `limit`, or
  // a later one that follows another within `quiet`.
  std::optional<Clock::time_point> painted(
      std::chrono::milliseconds limit,
      std::chrono::milliseconds quiet = std::chrono::milliseconds(30));
  // Waits until nothing has been painted for `quiet`.
  void waitForQuiet(std::chrono::milliseconds quiet);

 private:
  xcb_generic_event_t* next(Clock::time_point end);
  void fake(std::uint8_t type, std::uint8_t detail);

  xcb_connection_t* connection_;
  xcb_window_t root_ = 0;
  std::uint8_t damageEvent_ = 0;
  xcb_damage_damage_t damage_ = 0;
};

}  // namespace fexora::bench
