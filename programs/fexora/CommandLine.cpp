#include "programs/fexora/CommandLine.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

#include <CLI/CLI.hpp>

#include "programs/fexora/Failure.h"

namespace fexora::program {
namespace {

struct CommandEntry {
  const char* name;
  Command command;
  const char* operands;
  const char* purpose;
};

constexpr std::array<CommandEntry, 7> kCommands = {{
    {"", Command::convert, "AMOUNT SRC [DST…]",
     "Convert AMOUNT (a number, or a calculation like 12+3*2) of SRC into each DST, or into the "
     "stored selection. Other commands: select, settings, search, refresh, watch, status."},
    {"select", Command::select, "[CODE…]", "Show or replace the stored selection."},
    {"settings", Command::settings, "[NAME [VALUE]]", "Show the settings, or set one."},
    {"search", Command::search, "TEXT", "Find currencies by code or name."},
    {"refresh", Command::refresh, "", "Load fresh rates from the service, and wait for them."},
    {"watch", Command::watch, "", "Show each change that another process makes to the store."},
    {"status", Command::status, "", "Show where the store lies, what it holds and how old it is."},
}};

constexpr std::array<std::string_view, 7> kWithValue = {
    "--container", "--locale", "--lang", "--limit", "--exclude", "--count", "--refresh"};

// Options start with two hyphens. A word with one is an operand, like the amount -5 or -.5.
struct SortedWords {
  std::vector<std::string> options;
  std::vector<std::string> operands;
};

SortedWords sortWords(const std::vector<std::string>& words) {
  SortedWords sorted;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string& word = words[i];
    if (word == "--") {
      sorted.operands.insert(sorted.operands.end(),
                             words.begin() + static_cast<std::ptrdiff_t>(i) + 1, words.end());
      break;
    }
    if (!word.starts_with("--")) {
      sorted.operands.push_back(word);
      continue;
    }
    sorted.options.push_back(word);
    const bool takesNext =
        std::find(kWithValue.begin(), kWithValue.end(), word) != kWithValue.end();
    // Joined, so that a value like -5 is not taken for an option.
    if (takesNext && i + 1 < words.size()) sorted.options.back() += "=" + words[++i];
  }
  return sorted;
}

const CommandEntry& takeCommand(std::vector<std::string>& operands) {
  for (const CommandEntry& entry : kCommands) {
    if (!operands.empty() && *entry.name != '\0' && operands.front() == entry.name) {
      operands.erase(operands.begin());
      return entry;
    }
  }
  return kCommands.front();
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
      app.add_flag("--names", line.names, "Show names beside the codes");
      break;
    case Command::search:
      app.add_option("--limit", line.limit, "How many matches to count")->type_name("N");
      app.add_option("--exclude", line.exclude, "Leave this currency out")->type_name("CODE");
      break;
    case Command::watch:
      app.add_option("--count", line.count, "End after so many changes")->type_name("N");
      app.add_option("--refresh", line.refresh, "Load fresh rates this often")
          ->type_name("SECONDS");
      break;
    default:
      break;
  }
}

// CLI11 knows the options only; the operands are named here.
std::string helpText(const CLI::App& app, const std::string& operands) {
  constexpr std::string_view kOptions = "[OPTIONS]";
  std::string text = app.help();
  const auto at = text.find(kOptions);
  if (at != std::string::npos) text.insert(at + kOptions.size(), " " + operands);
  while (text.ends_with('\n')) text.pop_back();
  return text;
}

void checkRanges(const CommandLine& line) {
  if (line.count && *line.count < 1) throw usageFailure("--count takes a whole number from 1");
  if (line.refresh && !(*line.refresh >= 1 && std::isfinite(*line.refresh))) {
    throw usageFailure("--refresh takes a number of seconds from 1");
  }
}

}  // namespace

bool asksForJson(const std::vector<std::string>& words) {
  const auto end = std::find(words.begin(), words.end(), "--");
  return std::find(words.begin(), end, "--json") != end;
}

CommandLine readCommandLine(const std::vector<std::string>& words) {
  SortedWords sorted = sortWords(words);
  CommandLine line;
  const CommandEntry& entry = takeCommand(sorted.operands);
  line.command = entry.command;
  line.operands = std::move(sorted.operands);

  CLI::App app(entry.purpose,
               "fexora" + (*entry.name != '\0' ? std::string(" ") + entry.name : ""));
  app.set_help_flag("--help", "Print this help");
  bool version = false;
  addOptions(app, line, version);
  std::reverse(sorted.options.begin(), sorted.options.end());  // CLI11 takes them from the back
  try {
    app.parse(sorted.options);
  } catch (const CLI::CallForHelp&) {
    line.answer = helpText(app, entry.operands);
    return line;
  } catch (const CLI::ParseError& error) {
    throw usageFailure(error.what());
  }
  if (version) line.answer = "fexora " FEXORA_VERSION;
  checkRanges(line);
  return line;
}

}  // namespace fexora::program
