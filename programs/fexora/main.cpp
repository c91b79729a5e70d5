// The command-line host: converts offline, and shows and changes what the store holds.
#include <cstdlib>
#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "fexora/fexora.h"
#include "fexora/platform/loop/LazyRunLoop.h"

#include "programs/fexora/CommandLine.h"
#include "programs/fexora/Commands.h"
#include "programs/fexora/Locales.h"
#include "programs/fexora/Output.h"
#include "programs/shared/Failure.h"
#include "programs/shared/Process.h"
#include "programs/shared/ShownNames.h"

namespace fexora::program {
namespace {

// For commands that are over before another process could save: the kernel takes some ten
// milliseconds to end a process that has watched a folder.
class NoFolderWatch final : public FolderWatch {
 public:
  std::unique_ptr<Watch> watch(const std::string& /*folder*/, const std::string& /*ignoredPrefix*/,
                               std::function<void()> /*changed*/) override {
    return nullptr;
  }
};

bool waits(Command command) {
  return command == Command::watch || command == Command::refresh;
}

// Before anything else asks the library, since it reads these at its first use.
void prepareLibrary(const CommandLine& line) {
  static NoFolderWatch noWatch;
  // Calls nothing, as no loop would before the command's end.
  static LazyRunLoop noLoop([]() -> RunLoop* { return nullptr; });
  if (!waits(line.command)) {
    Platform::process().folderWatch = &noWatch;
    Platform::process().loop = &noLoop;
  }
  if (!line.verbose) Log::setProcessSink({});
  if (!line.container.empty()) setenv("FEXORA_CONTAINER", line.container.c_str(), 1);
  requireLocale("--locale", line.locale);
  requireLocale("--lang", line.language);
  if (!line.locale.empty()) Locale::setCurrent(line.locale);
  useNamesOf(line.language);
  rateManager().setAnswerCheck(plausible());
}

Exit run(const CommandLine& line) {
  switch (line.command) {
    case Command::convert:
      return convert(line);
    case Command::select:
      select(line);
      break;
    case Command::settings:
      settings(line);
      break;
    case Command::search:
      search(line);
      break;
    case Command::refresh:
      refresh(line);
      break;
    case Command::history:
      return history(line);
    case Command::watch:
      watch(line);
      break;
    case Command::status:
      status(line);
      break;
  }
  return Exit::done;
}

int runProgram(const std::vector<std::string>& words) {
  prepareProcess();
  const bool json = asksForJson(words);
  try {
    const CommandLine line = readCommandLine(words);
    if (line.answer) {
      printLine(*line.answer);
      return static_cast<int>(Exit::done);
    }
    prepareLibrary(line);
    return static_cast<int>(run(line));
  } catch (const Failure& failure) {
    printFailure(failure, json);
    return static_cast<int>(failure.exit);
  } catch (const std::exception& error) {
    printFailure({Exit::notWritten, "internal", error.what()}, json);
    return static_cast<int>(Exit::notWritten);
  }
}

}  // namespace
}  // namespace fexora::program

int main(int count, char** words) {
  return fexora::program::runProgram({words + 1, words + count});
}
