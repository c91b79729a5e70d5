#include "programs/fexora/CommandLine.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <string_view>
#include <utility>

#include <CLI/CLI.hpp>

#include "programs/shared/Failure.h"
#include "programs/shared/Words.h"

namespace fexora::program {
namespace {

struct CommandEntry {
  const char* name;
  Command command;
  const char* operands;
  const char* purpose;
};

constexpr std::array<CommandEntry, 8> kCommands = {{
    {"", Command::convert, "AMOUNT SRC [DST…]",
     "Convert AMOUNT (a number, a calculation like 12+3*2, or - for one a line of standard input) "
     "of SRC into each DST, or into the stored selection. Read as one sentence, in words or in "
     "quotes: $100, 5k dollars to euros, \"20% of 50 usd in eur\", usd eur."},
    {"select", Command::select, "[CODE…]", "Show, replace or change the stored selection."},
    {"settings", Command::settings, "[NAME [VALUE]]", "Show the settings, or set one."},
    {"search", Command::search, "TEXT…", "Find currencies by code, sign, name or country."},
    {"refresh", Command::refresh, "[SOURCE…]",
     "Load fresh rates and wait for them: from where the setting ratesFrom says, or from sources."},
    {"history", Command::history, "[SRC DST…]",
     "Show how the rate of a pair moved, or which past days are kept."},
    {"watch", Command::watch, "", "Show each change that another process makes to the store."},
    {"status", Command::status, "", "Show where the store lies, what it holds and how old it is."},
}};

constexpr std::array<std::string_view, 17> kWithValue = {
    "--container", "--locale",  "--lang",  "--limit",  "--exclude", "--from",
    "--count",     "--refresh", "--add",   "--remove", "--on",      "--before",
    "--source",    "--at-most", "--since", "--until",  "--history"};

const CommandEntry& takeCommand(std::vector<std::string>& operands) {
  for (const CommandEntry& entry : kCommands) {
    if (!operands.empty() && *entry.name != '\0' && operands.front() == entry.name) {
      operands.erase(operands.begin());
      return entry;
    }
  }
  return kCommands.front();
}

// What each command does, below the options of a conversion.
std::string commandsText() {
  std::string text = "Commands (fexora COMMAND --help):";
  for (const CommandEntry& entry : kCommands) {
    if (*entry.name == '\0') continue;
    constexpr std::size_t kWidth = 29;
    std::string row = "\n  ";
    row.append(entry.name).append(" ").append(entry.operands);
    // The sign for more words is one character of three bytes.
    const std::size_t width = kWidth + (row.ends_with("…") || row.ends_with("…]") ? 2 : 0);
    row.resize(std::max(row.size(), width), ' ');
    text.append(row).append(entry.purpose);
  }
  return text;
}

// Taken as they come, so that their order counts.
void addChange(CLI::App& app, CommandLine& line, const char* name, bool adds, const char* purpose) {
  const auto take = [&line, adds](const std::string& code) {
    line.changes.push_back({adds, code});
  };
  app.add_option_function<std::string>(name, take, purpose)
      ->type_name("CODE")
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast)
      ->trigger_on_parse();
}

void addSource(CLI::App& app, CommandLine& line) {
  app.add_option("--source", line.sources, "Of this source of past rates alone, like ecb")
      ->type_name("NAME");
}

void addOptions(CLI::App& app, CommandLine& line, bool& version) {
  app.add_option("--container", line.container, "Folder of the store")->type_name("DIR");
  app.add_option("--locale", line.locale, "Locale of numbers, like de_DE")->type_name("NAME");
  app.add_option("--lang", line.language, "Language of names, like ja")->type_name("NAME");
  app.add_flag("--json", line.json, "Print JSON");
  app.add_flag("--verbose", line.verbose, "Show the library's log on standard error");
  app.add_flag("--version", version, "Print the version");
  switch (line.command) {
    case Command::convert:
      app.add_flag("--invert", line.invert, "Divide by the rates instead of multiplying");
      app.add_flag("--no-save", line.noSave, "Do not record the amount in the store");
      app.add_flag("--rounded", line.rounded, "Round to each currency's minor unit");
      app.add_flag("--plain", line.plain, "Print the numbers alone, one a line");
      app.add_flag("--names", line.names, "Show names beside the codes");
      app.add_option("--on", line.on, "By the rates of that day, or of the newest one before it")
          ->type_name("DAY");
      app.add_option("--before", line.before, "By the newest rates before that day")
          ->type_name("DAY");
      addNumber(app, "--at-most", line.atMost, "How many days older they may be (7)")
          ->type_name("DAYS");
      addSource(app, line);
      app.footer(commandsText());
      break;
    case Command::select:
      addChange(app, line, "--add", true, "Put this currency at the end, unless it is there");
      addChange(app, line, "--remove", false, "Take this currency out");
      break;
    case Command::search:
      addNumber(app, "--limit", line.limit, "How many at most")->type_name("N");
      app.add_flag("--plain", line.plain, "By code and name only, in the catalogue's order");
      app.add_option("--exclude", line.exclude, "Leave this currency out")->type_name("CODE");
      break;
    case Command::refresh:
      app.add_option(
             "--from", line.from,
             "A named source (ecb, exchange-api, service), a file, - or an address that holds "
             "rates; later ones add what is missing")
          ->type_name("SOURCE");
      app.add_option("--history", line.past,
                     "Keep rates of past days: ecb, ecb-90, or files; takes none into the store")
          ->type_name("SOURCE");
      app.add_flag("--force", line.force, "Take rates that look wrong, too");
      break;
    case Command::history:
      app.add_option("--since", line.since, "The first day")->type_name("DAY");
      app.add_option("--until", line.until, "The last day")->type_name("DAY");
      addSource(app, line);
      app.add_flag("--plot", line.plot, "Draw it (the default on a terminal)");
      app.add_flag("--csv", line.csv, "Print lines of values with commas between them");
      break;
    case Command::watch:
      addNumber(app, "--count", line.count, "End after so many changes")->type_name("N");
      addNumber(app, "--refresh", line.refresh, "Load fresh rates this often")
          ->type_name("SECONDS");
      break;
    default:
      break;
  }
}

constexpr std::int64_t kMostDays = 36'525;

void checkRanges(const CommandLine& line) {
  if (line.limit && *line.limit < 1) throw usageFailure("--limit takes a whole number from 1");
  if (line.count && *line.count < 1) throw usageFailure("--count takes a whole number from 1");
  if (line.atMost && (*line.atMost < 0 || *line.atMost > kMostDays)) {
    throw usageFailure("--at-most takes a number of days from 0 to " + std::to_string(kMostDays));
  }
  if (!line.on.empty() && !line.before.empty()) {
    throw usageFailure("--on and --before name one day each: give one of them");
  }
  if (line.atMost && line.on.empty() && line.before.empty() &&
      (line.operands.empty() || line.operands.front() != "-")) {
    throw usageFailure("--at-most goes with --on or --before");
  }
  if (line.plot + line.csv + line.json > 1) {
    throw usageFailure("give one of --plot, --csv and --json");
  }
  if (line.refresh && !(*line.refresh >= 1 && std::isfinite(*line.refresh))) {
    throw usageFailure("--refresh takes a number of seconds from 1");
  }
}

}  // namespace

// As CLI11 reads the flag: the last one counts.
bool asksForJson(const std::vector<std::string>& words) try {
  constexpr std::string_view kFlag = "--json=";
  const auto end = std::find(words.begin(), words.end(), "--");
  bool asks = false;
  std::for_each(words.begin(), end, [&](const std::string& word) {
    if (word == "--json" || word == kFlag) asks = true;
    if (word.starts_with(kFlag)) CLI::detail::lexical_cast(word.substr(kFlag.size()), asks);
  });
  return asks;
} catch (const std::bad_alloc&) {
  return false;
}

std::string commandMeant(std::string_view word) {
  const bool isShort = word.size() == 2 && word[0] == '-' && std::isalpha(word[1]) != 0;
  if (isShort) return "; options are whole words, see fexora --help";
  std::vector<std::string> known = {"--help", "--version"};
  for (const CommandEntry& entry : kCommands) {
    if (*entry.name != '\0') known.emplace_back(entry.name);
  }
  return offerOf(word, known);
}

CommandLine readCommandLine(const std::vector<std::string>& words) try {
  SortedWords sorted = sortWords(words, kWithValue);
  CommandLine line;
  const CommandEntry& entry = takeCommand(sorted.operands);
  line.command = entry.command;
  line.operands = std::move(sorted.operands);

  CLI::App app(entry.purpose,
               "fexora" + (*entry.name != '\0' ? std::string(" ") + entry.name : ""));
  app.set_help_flag("-h,--help", "Print this help");
  bool version = false;
  addOptions(app, line, version);
  try {
    parseOptions(app, std::move(sorted.options));
  } catch (const CLI::CallForHelp&) {
    line.answer = helpText(app, entry.operands);
    return line;
  }
  if (version) line.answer = "fexora " FEXORA_VERSION;
  checkRanges(line);
  return line;
} catch (const CLI::ParseError& error) {
  throw usageFailure(error.what());
}

}  // namespace fexora::program
