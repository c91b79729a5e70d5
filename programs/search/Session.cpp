#include "programs/search/Session.h"

#include <memory>

#include "programs/search/Converter.h"

namespace fexora::search {
namespace {

// A call of the bus's own with the name.
unsigned askBus(GDBusConnection* bus, const char* method, GVariant* parameters) {
  GVariant* reply = g_dbus_connection_call_sync(
      bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method,
      parameters, G_VARIANT_TYPE("(u)"), G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
  unsigned answer = 0;
  if (reply == nullptr) return answer;
  g_variant_get(reply, "(u)", &answer);
  g_variant_unref(reply);
  return answer;
}

std::vector<Answer> ask(const std::string& query) {
  StoreManager& store = storeManager();
  // Where there is no file yet, opening it counts as a save, and changes soon after would be
  // missed.
  store.setReconcilesAfterSkip(true);
  return answersTo(query, store);
}

class Session {
 public:
  Session(GDBusConnection* bus, double idleSeconds)
      : bus_(bus), idleMilliseconds_(static_cast<unsigned>(idleSeconds * 1000)) {}
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
  ~Session() { g_main_loop_unref(loop_); }

  bool run() {
    constexpr unsigned kDoNotQueue = 4;
    constexpr unsigned kIsOwner = 1;
    // The object stands before the name is there: its first call may wait already.
    const bool serves =
        service_.exportOn(bus_) &&
        askBus(bus_, "RequestName", g_variant_new("(su)", kBusName, kDoNotQueue)) == kIsOwner;
    if (!serves) return false;
    restartIdleTimer();
    g_main_loop_run(loop_);
    // What was asked before the name was given back is answered still.
    askBus(bus_, "ReleaseName", g_variant_new("(s)", kBusName));
    while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
    }
    g_dbus_connection_flush_sync(bus_, nullptr, nullptr);
    return true;
  }

 private:
  void restartIdleTimer() {
    if (timer_ != 0) g_source_remove(timer_);
    timer_ = g_timeout_add(
        idleMilliseconds_,
        [](gpointer self) {
          static_cast<Session*>(self)->end();
          return G_SOURCE_REMOVE;
        },
        this);
  }
  void end() {
    timer_ = 0;
    g_main_loop_quit(loop_);
  }

  GDBusConnection* bus_;
  unsigned idleMilliseconds_;
  unsigned timer_ = 0;
  GMainLoop* loop_ = g_main_loop_new(nullptr, FALSE);
  Service service_{{ask,
                    [this](const std::vector<std::string>& words) { openConverter(bus_, words); },
                    [this] { restartIdleTimer(); }}};
};

}  // namespace

bool serve(double idleSeconds) {
  GDBusConnection* bus = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
  return bus != nullptr && std::make_unique<Session>(bus, idleSeconds)->run();
}

}  // namespace fexora::search
