// bench_search N: a search as typed, letter by letter, over N named currencies, against a plain
// byte search over one block of the same lower-cased names. Both find the same currencies by name;
// ours also looks at codes, characters and canonical forms.
#include <algorithm>
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
#include "fexora/catalogue/CurrencyNames.h"
#include "fexora/platform/strings/TableStrings.h"

#include "bench/support/FolderResources.h"
#include "bench/support/Peers.h"

namespace fexora::bench {
namespace {

constexpr std::size_t kTypedNames = 400;
constexpr std::size_t kShown = 20;  // as many as fit on a screen
constexpr std::size_t kAll = INT64_MAX;

using Words = std::vector<std::string>;

const Words kAscii = {"dollar", "pound",   "franc",   "peso",  "krone", "dinar",    "rupee",
                      "coin",   "token",   "silver",  "gold",  "north", "island",   "republic",
                      "united", "digital", "reserve", "crown", "real",  "shilling", "central"};
const Words kOther = {"रुपया",  "डॉलर",  "येन",     "दीनार", "पाउंड", "क्रोना",  "フラン",
                      "円",    "ドル",  "ポンド", "دولار", "ين",   "دينار",  "جنيه",
                      "złoty", "króna", "über",   "réal",  "peso", "dollar", "новый"};

// Names of three words and two letters, nearly all different.
Words makeNames(std::size_t n, const Words& words, std::mt19937& random) {
  Words names;
  for (std::size_t i = 0; i < n; ++i) {
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

  std::vector<std::size_t> find(std::string_view lowerCased, std::size_t limit) const {
    std::vector<std::size_t> found;
    for (std::size_t from = 0; from < block_.size() && found.size() < limit;) {
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

// Each run of a way is one search, the queries in turn: the median is that of a query.
void race(const char* kind, const CurrencyManager& manager, const Words& names,
          const Words& queries, std::size_t limit) {
  const PlainSearch plain(names);
  Words lowerCased;
  for (const std::string& query : queries) {
    lowerCased.push_back(Text::process().lowercased(query));
  }
  Race race(std::string("a search as typed, ") + kind +
                (limit == kAll ? ", all that match" : ", until 20 are found"),
            names.size());
  race.add("one byte search over one lower-cased block", [&, next = std::size_t{0}]() mutable {
    return static_cast<double>(plain.find(lowerCased[next++ % queries.size()], limit).size());
  });
  race.add("currenciesForString", [&, next = std::size_t{0}]() mutable {
    const std::string& query = queries[next++ % queries.size()];
    return static_cast<double>(
        manager.currenciesForString(query, static_cast<std::int64_t>(limit), {}).size());
  });
  const SearchJob job{names, queries, limit};
  Peers<SearchJob>::enter(race, job);
  race.run(4.0);
}

void run(const char* kind, std::size_t n, const Words& words, const std::string& folder) {
  std::mt19937 random(1);  // NOLINT(cert-msc51-cpp): the same searches every time
  const Words names = makeNames(n, words, random);
  TableStrings::Table table;
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
  manager.currenciesForString("a", 1, {});  // makes the keys
  const Words queries = typedQueries(names, random);
  race(kind, manager, names, queries, kShown);
  race(kind, manager, names, queries, kAll);
}

// The library's own catalogue and English names: what a person types on the way to a name, a
// country, and with a slip.
void runRanked() {
  CurrencyNames strings(Text::process(), "en");
  Platform platform = Platform::process();
  platform.strings = &strings;
  const CurrencyManager manager(platform);
  manager.rankedCurrencies("a", 1);  // makes the keys
  manager.currenciesForString("a", 1, {});
  Words targets = {"switzerland", "deutschland", "united states", "dolar", "swizz franc", "rouble"};
  for (const CurrencyRef& currency : manager.currencies()) {
    targets.push_back(localizedString(strings, currency->code()));
  }
  std::mt19937 random(1);  // NOLINT(cert-msc51-cpp): the same searches every time
  const Words queries = typedQueries(targets, random);
  Race race("a ranked search as typed, the library's catalogue, until 20 are found",
            manager.currencies().size());
  race.add("currenciesForString", [&, next = std::size_t{0}]() mutable {
    const std::string& query = queries[next++ % queries.size()];
    return static_cast<double>(manager.currenciesForString(query, kShown, {}).size());
  });
  race.add("rankedCurrencies", [&, next = std::size_t{0}]() mutable {
    const std::string& query = queries[next++ % queries.size()];
    return static_cast<double>(manager.rankedCurrencies(query, kShown).size());
  });
  race.run(4.0);
}

}  // namespace
}  // namespace fexora::bench

int main(int count, char** words) {
  const long n = count == 2 ? std::strtol(words[1], nullptr, 10) : 0;
  if (n < 2 || n > 100'000) {
    std::fputs("bench_search: expected a number of currencies from 2 to 100000\n", stderr);
    return 2;
  }
  std::string folder = (std::filesystem::temp_directory_path() / "fexora-bench-XXXXXX").string();
  if (mkdtemp(folder.data()) == nullptr) return 1;
  const auto names = static_cast<std::size_t>(n);
  fexora::bench::run("ASCII", names, fexora::bench::kAscii, folder);
  fexora::bench::run("other", names, fexora::bench::kOther, folder);
  std::filesystem::remove_all(folder);
  fexora::bench::runRanked();
  return 0;
}
