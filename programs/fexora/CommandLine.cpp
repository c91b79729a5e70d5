#include "programs/fexora/CommandLine.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <string_view>
#include <utility>

#include "programs/shared/Failure.h"
#include "programs/shared/OptionReader.h"
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
    {"refresh", Command::refresh, "",
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
void addChange(OptionReader& reader, CommandLine& line, const char* name, bool adds,
               const char* purpose) {
  const auto take = [&line, adds](const std::string& code) {
    line.changes.push_back({adds, code});
  };
  reader.addEach(name, take, "CODE", purpose);
}

void addSource(OptionReader& reader, CommandLine& line) {
  reader.addTexts("--source", line.sources, "NAME", "Of this source of past rates alone, like ecb");
}

void addOptions(OptionReader& reader, CommandLine& line, bool& version) {
  reader.addText("--container", line.container, "DIR", "Folder of the store");
  reader.addText("--locale", line.locale, "NAME", "Locale of numbers, like de_DE");
  reader.addText("--lang", line.language, "NAME", "Language of names, like ja");
  reader.addFlag("--json", line.json, "Print JSON");
  reader.addFlag("--verbose", line.verbose, "Show the library's log on standard error");
  reader.addFlag("--version", version, "Print the version");
  switch (line.command) {
    case Command::convert:
      reader.addFlag("--invert", line.invert, "Divide by the rates instead of multiplying");
      reader.addFlag("--no-save", line.noSave, "Do not record the amount in the store");
      reader.addFlag("--rounded", line.rounded, "Round to each currency's minor unit");
      reader.addFlag("--plain", line.plain, "Print the numbers alone, one a line");
      reader.addFlag("--names", line.names, "Show names beside the codes");
      reader.addText("--on", line.on, "DAY",
                     "By the rates of that day, or of the newest one before it");
      reader.addText("--before", line.before, "DAY", "By the newest rates before that day");
      reader.addNumber("--at-most", line.atMost, "DAYS", "How many days older they may be (7)");
      addSource(reader, line);
      reader.setFooter(commandsText);
      break;
    case Command::select:
      addChange(reader, line, "--add", true, "Put this currency at the end, unless it is there");
      addChange(reader, line, "--remove", false, "Take this currency out");
      break;
    case Command::search:
      reader.addNumber("--limit", line.limit, "N", "How many at most");
      reader.addFlag("--plain", line.plain, "By code and name only, in the catalogue's order");
      reader.addTexts("--exclude", line.exclude, "CODE", "Leave this currency out");
      break;
    case Command::refresh:
      reader.addTexts(
          "--from", line.from, "SOURCE",
          "A named source (ecb, exchange-api, service), a file, - or an address that holds "
          "rates; later ones add what is missing");
      reader.addTexts("--history", line.past, "SOURCE",
                      "Keep rates of past days: ecb, ecb-90, or files; takes none into the store");
      reader.addFlag("--force", line.force, "Take rates that look wrong, too");
      break;
    case Command::history:
      reader.addText("--since", line.since, "DAY", "The first day");
      reader.addText("--until", line.until, "DAY", "The last day");
      addSource(reader, line);
      reader.addFlag("--plot", line.plot, "Draw it (the default on a terminal)");
      reader.addFlag("--csv", line.csv, "Print lines of values with commas between them");
      break;
    case Command::watch:
      reader.addNumber("--count", line.count, "N", "End after so many changes");
      reader.addNumber("--refresh", line.refresh, "SECONDS", "Load fresh rates this often");
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
  if (line.plot + line.csv + line.json > 1) {
    throw usageFailure("give one of --plot, --csv and --json");
  }
  if ((line.plot || line.csv) && line.operands.empty()) {
    throw usageFailure("--plot and --csv take two currencies, as in: fexora history USD EUR --csv");
  }
  if (line.refresh && !(*line.refresh >= 1 && std::isfinite(*line.refresh))) {
    throw usageFailure("--refresh takes a number of seconds from 1");
  }
}

}  // namespace

// As the flag is read: the last one counts.
bool asksForJson(const std::vector<std::string>& words) try {
  constexpr std::string_view kFlag = "--json=";
  const auto end = std::find(words.begin(), words.end(), "--");
  bool asks = false;
  std::for_each(words.begin(), end, [&](const std::string& word) {
    if (word == "--json" || word == kFlag) {
      asks = true;
    } else if (word.starts_with(kFlag)) {
      asks = flagValue(word.substr(kFlag.size())).value_or(asks);
    }
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

  OptionReader reader(entry.purpose,
                      "fexora" + (*entry.name != '\0' ? std::string(" ") + entry.name : ""),
                      "-h,--help");
  bool version = false;
  addOptions(reader, line, version);
  if (!reader.read(std::move(sorted.options))) {
    line.answer = reader.help(entry.operands);
    return line;
  }
  if (version) line.answer = "fexora " FEXORA_VERSION;
  checkRanges(line);
  return line;
} catch (const OptionError& error) {
  throw usageFailure(error.what());
}

}  // namespace fexora::program
