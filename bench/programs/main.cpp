// bench_programs FOLDER: whole programs from start to end, against one that does nothing.
//
// FOLDER is what bench/seed made: stores and rates files, so that all convert offline. Linked
// statically and small, since a child's peak memory counts what its parent had in use.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include <fcntl.h>
#include <unistd.h>

#include "bench/programs/Child.h"
#include "bench/support/Race.h"
#include "bench/support/Results.h"

namespace fexora::bench {
namespace {

struct Program {
  std::string name;
  Command command;
};

std::vector<Program> programs(const std::string& bin, const std::string& folder) {
  const auto ours = [&](const char* store) {
    return Command{
        {bin + "/fexora", "--container", folder + "/" + store, "--no-save", "100", "USD", "EUR"},
        ""};
  };
  return {{"an empty C++ program", {{bin + "/bench_empty"}, ""}},
          {"fexora", ours("store")},
          {"fexora, no store yet", ours("none")},
          {"fexora, 10,000 currencies stored", ours("store-10000")},
          {"units", {{"units", "-t", "-f", "", "-f", folder + "/units", "100 USD", "EUR"}, ""}},
          {"KUnitConversion, a minimal program", {{bin + "/bench_kde", "100", "USD", "EUR"}, ""}},
          {"gcalccmd", {{"gcalccmd"}, folder + "/gcalccmd.input"}},
          {"qalc", {{"qalc", "-t", "-e", "0", "100 USD to EUR"}, ""}}};
}

std::vector<Program> present(std::vector<Program> all) {
  std::erase_if(all, [](const Program& program) {
    const bool missing = !run(program.command).ran;
    if (missing) std::printf("  left out, does not run here: %s\n", program.name.c_str());
    return missing;
  });
  return all;
}

void race(const std::string& job, const std::vector<Program>& all, double seconds,
          const std::function<void()>& prepare) {
  Race race(job);
  race.before(prepare);
  for (const Program& program : all) {
    race.add(program.name, [&program] { return run(program.command).peakMiB; });
  }
  race.run(seconds);
}

void reportMemory(const std::vector<Program>& all) {
  std::printf("peak memory of a whole program\n");
  double limit = 0;
  for (const Program& program : all) {
    std::array<double, 9> peaks{};
    for (double& peak : peaks) peak = run(program.command).peakMiB;
    std::nth_element(peaks.begin(), peaks.begin() + 4, peaks.end());
    if (limit == 0) limit = peaks[4];
    reportFigure("peak memory of a whole program", 0, program.name, peaks[4], "MiB");
    reportFigure("peak memory of a whole program", 0, program.name + ", ratio", peaks[4] / limit,
                 "");
  }
}

bool dropPageCache() {
  sync();
  const int file = open("/proc/sys/vm/drop_caches", O_WRONLY | O_CLOEXEC);
  if (file < 0) return false;
  const bool dropped = write(file, "3\n", 2) == 2;
  close(file);
  return dropped;
}

}  // namespace

void benchPrograms(const std::string& bin, const std::string& folder) {
  const std::vector<Program> all = present(programs(bin, folder));
  race("a whole program, warm", all, 6, [] {});
  reportMemory(all);
  if (dropPageCache()) {
    race("a whole program, page cache dropped", all, 20, [] { dropPageCache(); });
  } else {
    std::printf("a whole program, page cache dropped: left out, only root may drop it\n");
  }
}

}  // namespace fexora::bench

int main(int count, char** words) {
  if (count != 2) {
    std::fputs("bench_programs: expected the folder that bench/seed made\n", stderr);
    return 2;
  }
  const std::string folder = std::filesystem::absolute(words[1]).string();
  const std::string bin = std::filesystem::read_symlink("/proc/self/exe").parent_path().string();
  for (const char* variable : {"FEXORA_CONTAINER", "LC_ALL", "FEXORA_RATES_URL"})
    unsetenv(variable);
  setenv("LANG", "en_US.UTF-8", 1);
  setenv("HOME", folder.c_str(), 1);
  setenv("XDG_DATA_HOME", (folder + "/data").c_str(), 1);
  setenv("XDG_CACHE_HOME", (folder + "/cache").c_str(), 1);
  setenv("QALCULATE_USER_DIR", (folder + "/qalculate").c_str(), 1);
  fexora::bench::benchPrograms(bin, folder);
  return 0;
}
