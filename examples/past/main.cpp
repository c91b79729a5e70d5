// Keeps a bank's table of a day in the folder that is named, and asks for the rates of a Saturday.
#include <ctime>
#include <iostream>

#include <fexora/fexora.h>

int main(int count, char** words) {
  using namespace fexora;
  if (count != 2) return 2;
  Platform& platform = Platform::process();
  const auto history = rateHistory(words[1], *platform.files, *platform.log);

  PublishedTable table;
  table.day = std::chrono::year(2026) / 9 / 11;
  table.source = "ecb";
  table.base = "EUR";  // one of which bought
  table.figures = {{"USD", "1.1592"}, {"GBP", "0.85815"}, {"JPY", "178.56"}};
  const Kept kept = history->keep({&table, 1}, static_cast<double>(std::time(nullptr)));
  if (!kept.problem.empty()) std::cerr << kept.problem << '\n';

  const PastQuestion question;  // any source, seven days back at most
  const Day saturday = std::chrono::year(2026) / 9 / 12;
  for (const char* code : {"USD", "GBP", "DEM"}) {
    if (const auto past = history->on(saturday, "EUR", code, question)) {
      std::cout << "1 EUR = " << past->rate << ' ' << code << " on " << isoText(past->day) << ", "
                << past->source << ", " << text(past->how) << '\n';
    }
  }
}
