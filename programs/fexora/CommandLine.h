// The words of the command line, sorted into a command, its operands and its options.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fexora::program {

enum class Command : std::uint8_t {
  convert,
  select,
  settings,
  search,
  refresh,
  history,
  watch,
  status
};

struct CommandLine {
  Command command = Command::convert;
  std::vector<std::string> operands;  // without the command's own name

  bool json = false;
  bool verbose = false;
  std::string container;  // empty: not given, and so for the next two
  std::string locale;
  std::string language;

  bool invert = false;  // convert
  bool noSave = false;
  bool rounded = false;
  bool names = false;
  bool plain = false;  // convert and search
  // select: what --add and --remove name, in their order
  struct Change {
    bool adds = false;
    std::string code;
  };
  std::vector<Change> changes;
  std::optional<std::int64_t> limit;  // search
  std::vector<std::string> exclude;
  std::string on;                    // convert: a day, and so for the next one
  std::string before;                // convert
  std::vector<std::string> sources;  // convert and history, the one that is wanted most first
  std::optional<std::int64_t> atMost;
  std::string since;  // history
  std::string until;
  bool plot = false;
  bool csv = false;
  std::vector<std::string> past;  // refresh: where the past comes from
  std::vector<std::string> from;  // refresh
  bool force = false;
  std::optional<std::int64_t> count;  // watch
  std::optional<double> refresh;      // watch: seconds

  // Set when the line asked for a text instead of work: the help or the version.
  std::optional<std::string> answer;
};

// Whether --json, or --json=true and the like, stands among the words: known even when the rest
// cannot be read.
bool asksForJson(const std::vector<std::string>& words);

// "; did you mean select?" for a word that is nearly a command or --help, or nothing.
std::string commandMeant(std::string_view word);

// Throws a Failure of kind "usage" when the words do not fit the grammar.
CommandLine readCommandLine(const std::vector<std::string>& words);

}  // namespace fexora::program
