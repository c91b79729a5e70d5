// GFileMonitor on the folder, without its delay for frequent changes.
#include <gio/gio.h>

#include "bench/watch/Observer.h"

namespace fexora::bench {
namespace {

class GioMonitor final : public LoopObserver {
 public:
  explicit GioMonitor(const std::string& folder)
      : folder_(g_file_new_for_path(folder.c_str())),
        monitor_(g_file_monitor_directory(folder_, G_FILE_MONITOR_WATCH_MOVES, nullptr, nullptr)) {
    g_file_monitor_set_rate_limit(monitor_, 0);
    g_signal_connect(monitor_, "changed", G_CALLBACK(&GioMonitor::changed), this);
  }
  ~GioMonitor() override {
    g_object_unref(monitor_);
    g_object_unref(folder_);
  }

 private:
  static void changed(GFileMonitor*, GFile*, GFile*, GFileMonitorEvent, void* self) {
    static_cast<GioMonitor*>(self)->told();
  }

  GFile* folder_;
  GFileMonitor* monitor_;
};

const EnterWatch<GioMonitor> entered("GFileMonitor, without the read");

}  // namespace
}  // namespace fexora::bench
