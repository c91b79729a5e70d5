// Rates of past days, made up: 27 years of a bank's 41 and two of 340 dollar rates, against the
// least that the same work takes.
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

#include <fcntl.h>
#include <unistd.h>

#include "fexora/history/RateHistory.h"
#include "fexora/platform/base/Log.h"
#include "fexora/platform/files/Files.h"
#include "fexora/platform/text/NumberText.h"

#include "bench/core/Bench.h"
#include "bench/support/Race.h"

namespace fexora::bench {
namespace {

constexpr int kCodes = 41;
constexpr int kDollarCodes = 340;
const Day kFirst = std::chrono::year(1999) / 1 / 4;
const Day kLast = std::chrono::year(2026) / 11 / 24;
constexpr double kNow = 1'795'600'000;  // 25 November 2026

std::string codeOf(int number) {
  std::string code = "AAA";
  code[0] = static_cast<char>('A' + number / 26 / 26);
  code[1] = static_cast<char>('A' + number / 26 % 26);
  code[2] = static_cast<char>('A' + number % 26);
  return code;
}

// Random walks on every working day from `first` on.
void addWorkingDays(std::vector<PublishedTable>& tables, Day first, const PublishedTable& like,
                    int codes, int decimals) {
  std::mt19937_64 chance(27);
  std::normal_distribution<double> step(0, 0.005);
  std::vector<double> rates(static_cast<std::size_t>(codes), 1.0);
  for (Day day = first; day <= kLast; day += std::chrono::days(1)) {
    const unsigned weekday = std::chrono::weekday(day).c_encoding();
    if (weekday == 0 || weekday == 6) continue;
    PublishedTable& table = tables.emplace_back(like);
    table.day = day;
    for (int i = 0; i < codes; ++i) {
      double& rate = rates[static_cast<std::size_t>(i)];
      rate *= std::exp(step(chance));
      table.figures.emplace_back(codeOf(i), fixedText(rate, decimals));
    }
  }
}

std::vector<PublishedTable> allDays() {
  std::vector<PublishedTable> tables;
  addWorkingDays(tables, kFirst, {{}, "ecb", "EUR", {}}, kCodes, 5);
  addWorkingDays(tables, kLast - std::chrono::days(730), {{}, "usd", "USD", {}}, kDollarCodes, 8);
  return tables;
}

PublishedTable dollarTable(int number) {
  PublishedTable table{kLast, "usd" + std::to_string(number), "USD", {}};
  for (int i = 0; i < kDollarCodes; ++i) {
    table.figures.emplace_back(codeOf(i), fixedText(1 + 0.001 * i + 0.1 * number, 8));
  }
  return table;
}

class Folder {
 public:
  Folder() {
    if (mkdtemp(path_.data()) == nullptr) std::abort();
  }
  ~Folder() { std::filesystem::remove_all(path_); }
  const std::string& path() const { return path_; }
  std::unique_ptr<RateHistory> history() const {
    return rateHistory(path_, Files::process(), Log::process());
  }

 private:
  std::string path_ = (std::filesystem::current_path() / "bench-history-XXXXXX").string();
};

// What reaches the disk at the least: bytes, and one flush.
double appendAndFlush(const std::string& path, std::size_t bytes) {
  static const std::string block(std::size_t{8} << 20, 'x');
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
  const auto written = write(file, block.data(), bytes);
  fsync(file);
  close(file);
  return static_cast<double>(written);
}

}  // namespace

void benchHistory() {
  const std::vector<PublishedTable> years = allDays();
  const Folder folder;
  const auto history = folder.history();
  history->keep(years, kNow);
  const auto bytes = static_cast<std::size_t>(history->summary().bytes);
  int number = 0;

  Race insert("27 years kept");
  insert.add("as many bytes written and flushed",
             [&] { return appendAndFlush(folder.path() + "/bytes", bytes); });
  insert.add("a new history", [&] {
    const Folder fresh;
    return static_cast<double>(fresh.history()->keep(years, kNow).figures);
  });
  insert.run();

  // What it adds, the walks below are not to find.
  const Folder growing;
  const auto added = growing.history();
  added->keep(years, kNow);
  Race daily("a day of 340 rates kept");
  daily.add("4 KiB appended and flushed",
            [&] { return appendAndFlush(folder.path() + "/bytes", 4096); });
  daily.add("added to 27 years", [&] {
    const PublishedTable table = dollarTable(++number);
    return static_cast<double>(added->keep({&table, 1}, kNow).figures);
  });
  daily.run();

  const PastQuestion bank{{"ecb"}, 7};
  std::ifstream in(folder.path() + "/.fexora-history/rates.sqlite", std::ios::binary);
  const std::string whole{std::istreambuf_iterator<char>(in), {}};
  Race walks("a pair of past days");
  walks.add("the whole file summed, byte by byte", [&whole] {
    std::uint64_t sum = 0;
    for (const char byte : whole) sum += static_cast<unsigned char>(byte);
    return static_cast<double>(sum);
  });
  for (const int days : {365, 10'200}) {
    walks.add("over " + std::to_string(days) + " days", [&history, &bank, days] {
      return static_cast<double>(
          history->between(kLast - std::chrono::days(days), kLast, "AAB", "AAC", bank).size());
    });
  }
  std::vector<std::string> codes;
  for (int i = 2; i < 22; ++i) codes.push_back(codeOf(i));
  walks.add("newest of 20", [&] { return history->on(kLast, "AAA", codes, bank).front()->rate; });
  walks.run();
}

}  // namespace fexora::bench
