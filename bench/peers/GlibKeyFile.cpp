// GKeyFile: GLib's settings file. It keeps the text of every key that was not changed.
#include <glib.h>

#include "bench/support/Peers.h"

namespace fexora::bench {
namespace {

using KeyFile = std::shared_ptr<GKeyFile>;

KeyFile make() {
  return {g_key_file_new(), g_key_file_unref};
}

KeyFile fill(const World& world, const std::string& path) {
  KeyFile file = make();
  g_key_file_set_integer(file.get(), "settings", "fraction", 3);
  for (std::size_t i = 0; i < world.codes.size(); ++i) {
    g_key_file_set_double(file.get(), "rates", world.codes[i].c_str(), world.values[i]);
  }
  g_key_file_save_to_file(file.get(), path.c_str(), nullptr);
  return file;
}

double sumOf(GKeyFile* file) {
  double sum = 0;
  gsize count = 0;
  gchar** const keys = g_key_file_get_keys(file, "rates", &count, nullptr);
  for (gsize i = 0; i < count; ++i) sum += g_key_file_get_double(file, "rates", keys[i], nullptr);
  g_strfreev(keys);
  return sum;
}

const Peers<SaveJob> saves([](Race& race, const SaveJob& job) {
  const std::string path = job.world.folder + "/keyfile-save.ini";
  const KeyFile file = fill(job.world, path);
  race.add("GKeyFile (no flush of the folder)", [file, path, fraction = 3]() mutable {
    g_key_file_set_integer(file.get(), "settings", "fraction", fraction = fraction == 3 ? 4 : 3);
    return static_cast<double>(g_key_file_save_to_file(file.get(), path.c_str(), nullptr));
  });
});

const Peers<ReadJob> reads([](Race& race, const ReadJob& job) {
  const std::string path = job.world.folder + "/keyfile-read.ini";
  fill(job.world, path);
  race.add("GKeyFile", [path] {
    const KeyFile file = make();
    g_key_file_load_from_file(file.get(), path.c_str(), G_KEY_FILE_NONE, nullptr);
    return sumOf(file.get());
  });
});

}  // namespace
}  // namespace fexora::bench
