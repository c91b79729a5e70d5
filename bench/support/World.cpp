#include "bench/support/World.h"

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

#include "fexora/platform/text/NumberText.h"

#include "bench/support/FolderResources.h"

namespace fexora::bench {
namespace {

constexpr double kEuros = 0.8;  // as in bench/seed

std::string madeUpCode(std::size_t number) {
  std::string code;
  for (int i = 0; i < 4; ++i, number /= 26) code += static_cast<char>('A' + number % 26);
  return code;
}

}  // namespace

World::World(std::size_t n) {
  std::string name = (std::filesystem::temp_directory_path() / "fexora-bench-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) std::abort();
  folder = name;
  std::mt19937 random(1);  // NOLINT(cert-msc51-cpp): the same world every time
  std::ofstream plist(folder + "/Currency.plist");
  plist << "<plist version=\"1.0\"><array>";
  for (std::size_t i = 0; i < n; ++i) {
    codes.push_back(i == 0 ? "USD" : i == 1 ? "EUR" : madeUpCode(i));
    values.push_back(i == 0   ? 1.0
                     : i == 1 ? kEuros
                              : std::exp(std::normal_distribution<>(0, 3)(random)));
    records.push_back(USDRate::make(values.back(), codes.back()));
    plist << "<string>" << codes.back() << "</string>";
  }
  plist << "</array></plist>";
  plist.close();
  std::filesystem::create_directory(folder + "/container");
  setenv("FEXORA_CONTAINER", (folder + "/container").c_str(), 1);
  Log::setProcessSink({});
  Platform::process().resources = new FolderResources(folder);  // for the process's life
}

World::~World() {
  std::filesystem::remove_all(folder);
}

std::string answerOf(const World& world) {
  std::string text = R"({"serviceMessage":"","updated":1790640000,"source":"x","rates":[)";
  for (std::size_t i = 0; i < world.codes.size(); ++i) {
    if (i > 0) text += ',';
    text += R"({"code":")" + world.codes[i] + R"(","rate":)";
    appendShortestText(text, world.values[i]);
    text += '}';
  }
  return text + "]}";
}

}  // namespace fexora::bench
