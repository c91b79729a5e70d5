// The desktop's own search: answers amounts of money where people search for everything else.
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fexora/platform/files/ReadOnlyFiles.h"

#include "programs/search/Answers.h"
#include "programs/search/Session.h"
#include "programs/shared/Failure.h"
#include "programs/shared/JsonText.h"
#include "programs/shared/OptionReader.h"
#include "programs/shared/Process.h"
#include "programs/shared/ShownNames.h"
#include "programs/shared/Words.h"

namespace fexora::search {
namespace {

constexpr double kIdleSeconds = 60;
constexpr double kMostIdleSeconds = 86'400;

// Nothing is saved and nothing sent: the store cannot be written, and nobody asks for rates.
void prepareLibrary() {
  static ReadOnlyFiles files;
  Platform::process().files = &files;
  Log::setProcessSink({});
  program::useNamesOf("");
}

std::string jsonOf(const std::vector<Answer>& answers) {
  program::JsonText json;
  json.beginArray();
  for (const Answer& answer : answers) {
    json.beginObject().key("id").string(answer.id).key("title").string(answer.title);
    json.key("text").string(answer.text).key("number").string(answer.number).endObject();
  }
  return json.endArray().text();
}

struct Options {
  std::string query;  // empty: not given
  std::optional<double> idle;
  std::optional<std::string> answer;  // to --help or --version: print this and end
};

// Throws a program::OptionError.
Options optionsOf(const std::vector<std::string>& words) {
  constexpr std::array<std::string_view, 2> kWithValue = {"--query", "--idle"};
  program::OptionReader reader("Answers the desktop's search on the session bus, which starts it.",
                               "fexora-search", "-h,--help");
  Options options;
  bool version = false;
  reader.addText("--query", options.query, "TEXT", "Print the answers to this as JSON instead");
  reader.addNumber("--idle", options.idle, "SECONDS", "End when nobody has asked for so long (60)");
  reader.addFlag("--version", version, "Print the version");
  program::SortedWords sorted = program::sortWords(words, kWithValue);
  if (!sorted.operands.empty()) {
    throw program::OptionError("takes options alone, not " + program::joined(sorted.operands));
  }
  if (!reader.read(std::move(sorted.options))) options.answer = reader.help({}) + "\n";
  if (version) options.answer = "fexora-search " FEXORA_VERSION "\n";
  if (options.idle && !(*options.idle > 0 && *options.idle <= kMostIdleSeconds)) {
    throw program::OptionError("--idle takes seconds up to a day");
  }
  return options;
}

int runProgram(const std::vector<std::string>& words) {
  Options options = optionsOf(words);
  if (!options.answer) {
    prepareLibrary();
    if (options.query.empty()) return serve(options.idle.value_or(kIdleSeconds)) ? 0 : 1;
    options.answer = jsonOf(answersTo(options.query, storeManager())) + "\n";
  }
  if (std::fputs(options.answer->c_str(), stdout) >= 0 && std::fflush(stdout) == 0) return 0;
  std::fprintf(stderr, "fexora-search: standard output does not take the result: %s\n",
               std::strerror(errno));
  return static_cast<int>(program::Exit::notWritten);
}

}  // namespace
}  // namespace fexora::search

int main(int count, char** words) {
  fexora::program::prepareProcess();
  try {
    return fexora::search::runProgram({words + 1, words + count});
  } catch (const std::exception& error) {
    std::fprintf(stderr, "fexora-search: %s\n", error.what());
    return 2;
  }
}
