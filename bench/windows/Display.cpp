#include "bench/windows/Display.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

#include <poll.h>
#include <xcb/xtest.h>

namespace fexora::bench {
namespace {

struct Free {
  void operator()(void* taken) const { std::free(taken); }  // NOLINT: from the C library's heap
};
template <class T>
using Taken = std::unique_ptr<T, Free>;

constexpr std::uint8_t kSentByClient = 0x80;
constexpr std::uint8_t kWheelDown = 5;

[[noreturn]] void giveUp(const char* reason) {
  std::fprintf(stderr, "bench_windows: %s\n", reason);
  std::exit(2);  // NOLINT(concurrency-mt-unsafe): there is one thread
}

}  // namespace

Display::Display() : connection_(xcb_connect(nullptr, nullptr)) {
  if (xcb_connection_has_error(connection_) != 0) giveUp("there is no display; see bench/run");
  const xcb_query_extension_reply_t* damage = xcb_get_extension_data(connection_, &xcb_damage_id);
  const xcb_query_extension_reply_t* test = xcb_get_extension_data(connection_, &xcb_test_id);
  if (damage->present == 0 || test->present == 0) {
    giveUp("the display cannot tell what is painted, or press keys");
  }
  damageEvent_ = static_cast<std::uint8_t>(damage->first_event + XCB_DAMAGE_NOTIFY);
  const Taken<xcb_damage_query_version_reply_t> agreed(xcb_damage_query_version_reply(
      connection_,
      xcb_damage_query_version(connection_, XCB_DAMAGE_MAJOR_VERSION, XCB_DAMAGE_MINOR_VERSION),
      nullptr));
  root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
  const std::uint32_t told = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection_, root_, XCB_CW_EVENT_MASK, &told);
  xcb_flush(connection_);
}

Display::~Display() {
  xcb_disconnect(connection_);
}

xcb_generic_event_t* Display::next(Clock::time_point end) {
  while (true) {
    if (xcb_generic_event_t* event = xcb_poll_for_event(connection_)) return event;
    if (xcb_connection_has_error(connection_) != 0) giveUp("the display has gone");
    const auto left =
        std::chrono::duration_cast<std::chrono::microseconds>(end - Clock::now()).count();
    if (left <= 0) return nullptr;
    pollfd wait{xcb_get_file_descriptor(connection_), POLLIN, 0};
    const timespec rest{left / 1'000'000, left % 1'000'000 * 1000};
    ppoll(&wait, 1, &rest, nullptr);
  }
}

std::optional<xcb_window_t> Display::mapped(std::chrono::milliseconds limit) {
  const auto end = Clock::now() + limit;
  while (const Taken<xcb_generic_event_t> event{next(end)}) {
    if ((event->response_type & ~kSentByClient) != XCB_MAP_NOTIFY) continue;
    const auto& map = *reinterpret_cast<const xcb_map_notify_event_t*>(event.get());
    if (map.event == root_ && map.override_redirect == 0) return map.window;
  }
  return {};
}

void Display::forget() {
  // The answer to a question comes after all that happened before it.
  const Taken<xcb_get_input_focus_reply_t> answer(
      xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
  while (Taken<xcb_generic_event_t>(xcb_poll_for_event(connection_)) != nullptr) {
  }
}

void Display::focus(xcb_window_t window) {
  xcb_set_input_focus(connection_, XCB_INPUT_FOCUS_NONE, window, XCB_CURRENT_TIME);
  xcb_flush(connection_);
}

void Display::fake(std::uint8_t type, std::uint8_t detail) {
  xcb_test_fake_input(connection_, type, detail, 0, XCB_NONE, 0, 0, 0);
}

void Display::press(Key key) {
  fake(XCB_KEY_PRESS, static_cast<std::uint8_t>(key));
  fake(XCB_KEY_RELEASE, static_cast<std::uint8_t>(key));
  xcb_flush(connection_);
}

void Display::turnWheelDown() {
  fake(XCB_BUTTON_PRESS, kWheelDown);
  fake(XCB_BUTTON_RELEASE, kWheelDown);
  xcb_flush(connection_);
}

void Display::watch(xcb_window_t window) {
  if (damage_ != 0) xcb_damage_destroy(connection_, damage_);
  damage_ = xcb_generate_id(connection_);
  xcb_damage_create(connection_, damage_, window, XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
  const Taken<xcb_get_geometry_reply_t> size(
      xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, window), nullptr));
  if (size != nullptr) {
    xcb_warp_pointer(connection_, XCB_NONE, window, 0, 0, 0, 0,
                     static_cast<std::int16_t>(size->width / 2),
                     static_cast<std::int16_t>(size->height / 2));
  }
  forget();
}

std::optional<Clock::time_point> Display::painted(std::chrono::milliseconds limit,
                                                  std::chrono::milliseconds quiet) {
  std::optional<Clock::time_point> last;
  auto end = Clock::now() + limit;
  while (const Taken<xcb_generic_event_t> event{next(end)}) {
    if ((event->response_type & ~kSentByClient) != damageEvent_) continue;
    last = Clock::now();
    end = *last + quiet;
  }
  return last;
}

void Display::waitForQuiet(std::chrono::milliseconds quiet) {
  painted(quiet, quiet);
}

}  // namespace fexora::bench
