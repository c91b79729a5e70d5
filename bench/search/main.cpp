// bench_search: a search as typed, letter by letter, over 10,000 named currencies, against a plain
// byte search over one block of the same lower-cased names. Both find the same currencies by name;
// ours also looks at codes, characters and canonical forms.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <string.h>  // memmem

#include "fexora/catalogue/CurrencyManager.h"
#include "fexora/platform/foundation/StringTable.h"

namespace fexora::bench {
namespace {

constexpr std::size_t kCurrencies = 10'000;
constexpr std::size_t kTypedNames = 400;
constexpr std::int64_t kShown = 20;  // as many as fit on a screen
constexpr std::int64_t kAll = INT64_MAX;

using Words = std::vector<std::string>;

const Words kAscii = {"dollar", "pound",   "franc",   "peso",  "krone", "dinar",    "rupee",
                      "coin",   "token",   "silver",  "gold",  "north", "island",   "republic",
                      "united", "digital", "reserve", "crown", "real",  "shilling", "central"};
const Words kOther = {"रुपया",  "डॉलर",  "येन",     "दीनार", "पाउंड", "क्रोना",  "フラン",
                      "円",    "ドル",  "ポンド", "دولار", "ين",   "دينار",  "جنيه",
                      "złoty", "króna", "über",   "réal",  "peso", "dollar", "новый"};

class FolderResources final : public Resources {
 public:
  explicit FolderResources(std::string folder) : folder_(std::move(folder)) {}
  std::optional<std::string> path(std::string_view name, std::string_view extension) override {
    return folder_ + "/" + std::string(name) + "." + std::string(extension);
  }

 private:
  std::string folder_;
};

// Names of three words and two letters, nearly all different.
Words makeNames(const Words& words, std::mt19937& random) {
  Words names;
  for (std::size_t i = 0; i < kCurrencies; ++i) {
    std::string name;
    for (int word = 0; word < 3; ++word) name += words[random() % words.size()] + " ";
    for (int letter = 0; letter < 2; ++letter) name += static_cast<char>('a' + random() % 26);
    names.push_back(name);
  }
  return names;
}

// What a person types on the way to a name: its first character, its first two, and so on.
Words typedQueries(const Words& names, std::mt19937& random) {
  Words queries;
  for (std::size_t i = 0; i < kTypedNames; ++i) {
    const std::string& name = names[random() % names.size()];
    for (const std::size_t end : Text::process().characterEnds(name)) {
      queries.push_back(name.substr(0, end));
    }
  }
  return queries;
}

class PlainSearch {
 public:
  explicit PlainSearch(const Words& names) {
    for (const std::string& name : names) {
      starts_.push_back(block_.size());
      block_ += Text::process().lowercased(name) + "\n";
    }
    starts_.push_back(block_.size());
  }

  std::vector<std::size_t> find(std::string_view lowerCased, std::int64_t limit) const {
    std::vector<std::size_t> found;
    for (std::size_t from = 0; from < block_.size() && std::ssize(found) < limit;) {
      const void* const hit =
          memmem(block_.data() + from, block_.size() - from, lowerCased.data(), lowerCased.size());
      if (hit == nullptr) break;
      const auto at = static_cast<std::size_t>(static_cast<const char*>(hit) - block_.data());
      const auto next = std::upper_bound(starts_.begin(), starts_.end(), at);
      found.push_back(static_cast<std::size_t>(next - starts_.begin()) - 1);
      from = *next;
    }
    return found;
  }

 private:
  std::string block_;
  std::vector<std::size_t> starts_;
};

using Clock = std::chrono::steady_clock;

double microseconds(Clock::time_point since) {
  return std::chrono::duration<double, std::micro>(Clock::now() - since).count();
}

double percentile(std::vector<double> times, double share) {
  std::sort(times.begin(), times.end());
  return times[static_cast<std::size_t>(share * static_cast<double>(times.size() - 1))];
}

void race(const char* title, const CurrencyManager& manager, const Words& names,
          const Words& queries, std::int64_t limit) {
  const PlainSearch plain(names);
  std::vector<double> ours;
  std::vector<double> theirs;
  std::size_t found[2] = {0, 0};
  for (const std::string& query : queries) {
    const std::string lowerCased = Text::process().lowercased(query);
    auto begin = Clock::now();
    found[0] += plain.find(lowerCased, limit).size();
    theirs.push_back(microseconds(begin));
    begin = Clock::now();
    found[1] += manager.currenciesForString(query, limit, {}).size();
    ours.push_back(microseconds(begin));
  }
  std::printf("%s: %zu searches, %zu found, plainly %zu\n", title, queries.size(), found[1],
              found[0]);
  for (const double share : {0.5, 0.99}) {
    const double a = percentile(ours, share);
    const double b = percentile(theirs, share);
    std::printf("  %-16s %8.1f µs   plain %8.1f µs   %6.2f\n",
                share < 0.9 ? "median" : "99th percentile", a, b, a / b);
  }
}

void run(const char* kind, const Words& words, const std::string& folder) {
  std::mt19937 random(1);  // NOLINT(cert-msc51-cpp): the same searches every time
  const Words names = makeNames(words, random);
  StringTable table;
  std::ofstream plist(folder + "/Currency.plist");
  plist << "<plist version=\"1.0\"><array>";
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::string code = "Q" + std::to_string(i);
    plist << "<string>" << code << "</string>";
    table.emplace(code, names[i]);
  }
  plist << "</array></plist>";
  plist.close();
  FolderResources resources(folder);
  TableStrings strings;
  strings.setTable(std::move(table));
  Platform platform = Platform::process();
  platform.resources = &resources;
  platform.strings = &strings;
  const CurrencyManager manager(platform);
  const auto begin = Clock::now();
  manager.currenciesForString("a", 1, {});
  std::printf("%s names; the first search, which makes the keys: %.1f ms\n", kind,
              microseconds(begin) / 1000);
  const Words queries = typedQueries(names, random);
  race("  until 20 are found", manager, names, queries, kShown);
  race("  all that match", manager, names, queries, kAll);
}

}  // namespace
}  // namespace fexora::bench

int main() {
  std::string folder = (std::filesystem::temp_directory_path() / "fexora-bench-XXXXXX").string();
  if (mkdtemp(folder.data()) == nullptr) return 1;
  fexora::bench::run("ASCII", fexora::bench::kAscii, folder);
  fexora::bench::run("Other", fexora::bench::kOther, folder);
  std::filesystem::remove_all(folder);
  return 0;
}
