#include "programs/search/Converter.h"

#include <memory>
#include <utility>

#include <glib.h>

namespace fexora::search {

bool openConverter(const std::vector<std::string>& words, std::function<void()> ended) {
  std::string program = "fexora-converter";
  std::vector<std::string> all = {program};
  all.insert(all.end(), words.begin(), words.end());
  std::vector<char*> arguments;
  arguments.reserve(all.size() + 1);
  for (std::string& word : all) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  GPid child = 0;
  constexpr auto kFlags = static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_DO_NOT_REAP_CHILD);
  if (g_spawn_async(nullptr, arguments.data(), nullptr, kFlags, nullptr, nullptr, &child,
                    nullptr) == FALSE) {
    return false;
  }
  auto call = std::make_unique<std::function<void()>>(std::move(ended));
  g_child_watch_add_full(
      G_PRIORITY_DEFAULT, child,
      [](GPid pid, gint /*status*/, gpointer data) {
        g_spawn_close_pid(pid);
        (*static_cast<std::function<void()>*>(data))();
      },
      call.release(), [](gpointer data) { delete static_cast<std::function<void()>*>(data); });
  return true;
}

}  // namespace fexora::search
