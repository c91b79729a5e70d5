// A process that keeps and asks past rates, for the tests that check, cut off and kill one. The
// container is what the environment says.
//
//   historian keep NOW [--each]   reads tables, a line each: DAY SOURCE BASE CODE=FIGURE…; keeps
//   all
//                                 at once, or each by itself, and tells each day once it is kept
//   historian ask                 reads questions, a line each: DAY FROM TO [SOURCE]; answers each
//                                 with "RATE DAY SOURCE HOW" or "none"
//   historian all FIRST LAST      prints every table of these days in the form that keep reads
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>

#include <unistd.h>

#include "fexora/fexora.h"
#include "fexora/platform/files/ContainerFolder.h"
#include "fexora/platform/text/NumberText.h"

namespace {

using namespace fexora;

int fail(const std::string& problem) {
  std::cerr << problem << '\n';
  return 1;
}

PublishedTable tableOf(const std::string& line) {
  std::istringstream words(line);
  PublishedTable table;
  std::string word;
  words >> word >> table.source >> table.base;
  table.day = dayFromIsoText(word).value_or(Day());
  while (words >> word) {
    const auto equals = word.find('=');
    table.figures.emplace_back(word.substr(0, equals), word.substr(equals + 1));
  }
  return table;
}

int keep(RateHistory& history, double now, bool each) {
  std::vector<PublishedTable> tables;
  for (std::string line; std::getline(std::cin, line);) {
    tables.push_back(tableOf(line));
    if (!each) continue;
    const Kept kept = history.keep(tables, now);
    if (!kept.problem.empty()) return fail(kept.problem);
    const std::string told = isoText(tables.front().day) + "\n";
    if (::write(STDOUT_FILENO, told.data(), told.size()) < 0) return 1;
    tables.clear();
  }
  const Kept kept = history.keep(tables, now);
  if (!kept.notice.empty()) std::cerr << kept.notice << '\n';
  if (!kept.problem.empty()) return fail(kept.problem);
  if (!each) std::cout << kept.tables << ' ' << kept.figures << ' ' << kept.corrected << '\n';
  return 0;
}

int ask(RateHistory& history) {
  for (std::string line; std::getline(std::cin, line);) {
    std::istringstream words(line);
    std::string day;
    std::string from;
    std::string to;
    PastQuestion question;
    words >> day >> from >> to;
    for (std::string source; words >> source;) question.sources.push_back(source);
    const auto rate = history.on(dayFromIsoText(day).value_or(Day()), from, to, question);
    if (rate) {
      std::cout << shortestText(rate->rate) << ' ' << isoText(rate->day) << ' ' << rate->source
                << ' ' << text(rate->how) << '\n';
    } else {
      std::cout << "none\n";
    }
  }
  return history.problem().empty() ? 0 : fail(history.problem());
}

int all(RateHistory& history, Day first, Day last) {
  std::string problem;
  for (Day day = first; day <= last; day += std::chrono::days(1)) {
    for (const PublishedTable& table : history.published(day)) {
      std::cout << isoText(day) << ' ' << table.source << ' ' << table.base;
      for (const auto& [code, figure] : table.figures) std::cout << ' ' << code << '=' << figure;
      std::cout << '\n';
    }
    if (!history.problem().empty()) problem = history.problem();
  }
  return problem.empty() ? 0 : fail(problem);
}

}  // namespace

int main(int count, char** words) {
  std::ios::sync_with_stdio(false);
  Log::setProcessSink({});
  const std::string job = count > 1 ? words[1] : "";
  const auto history = rateHistory(containerPath({}), Files::process(), Log::process());
  if (job == "keep" && count > 2) return keep(*history, std::strtod(words[2], nullptr), count > 3);
  if (job == "ask") return ask(*history);
  if (job == "all" && count > 3) {
    return all(*history, dayFromIsoText(words[2]).value_or(Day()),
               dayFromIsoText(words[3]).value_or(Day()));
  }
  return fail("historian: see the head of its source");
}
