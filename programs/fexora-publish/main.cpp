// Makes the rates service's answer from sources of rates. See docs/operating.md.
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <exception>
#include <new>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/files/AtomicWriter.h"
#include "fexora/platform/files/ReadFile.h"
#include "fexora/platform/text/OneLine.h"

#include "programs/fexora-publish/Options.h"
#include "programs/fexora-publish/Publication.h"
#include "programs/fexora-publish/Rejection.h"
#include "programs/shared/Process.h"
#include "programs/sources/Source.h"

namespace fexora::publish {
namespace {

constexpr std::uint32_t kReadableByAll = 0644;

void write(std::FILE* stream, const std::string& text) {
  if (std::fwrite(text.data(), 1, text.size(), stream) == text.size() && std::fflush(stream) == 0) {
    return;
  }
  throw Rejection{Exit::notWritten,
                  std::string("standard output does not take the result: ") + std::strerror(errno)};
}

// The published file, or nothing when there is none.
std::optional<WholeFile> readPublished(const std::string& path) {
  auto whole = readWholeFile(Files::process(), path, limits::kAnswerBytes);
  if (whole.ok()) return std::move(*whole);
  if (whole.error() == std::errc::no_such_file_or_directory) return std::nullopt;
  throw Rejection{Exit::notWritten,
                  path + ": what stands there cannot be replaced: " + whole.error().message()};
}

void replace(const Options& options, const std::string& text,
             const std::optional<WholeFile>& published) {
  // An unchanged file keeps its time, and so the answers that clients hold stay valid.
  if (published && published->bytes == text) return;
  Files& files = Files::process();
  removeDeadTemporaries(files, folderOf(options.output));
  // Whoever may read the old file, like a web server, may read the new one.
  const auto outcome = published ? replaceFile(files, options.output, text, published->status)
                                 : replaceFile(files, options.output, text, kReadableByAll);
  if (!outcome.error) return;
  throw Rejection{Exit::notWritten, options.output + ": not written, since it failed to " +
                                        outcome.step + ": " + outcome.error.message()};
}

// The day that has begun in UTC.
Date today() {
  constexpr std::time_t kDaySeconds = 86400;
  const std::time_t now = std::time(nullptr);
  return Date(static_cast<double>(now - now % kDaySeconds));
}

void tellPassedOver(const Source& source) {
  if (source.passedOver == 0) return;
  const std::string text = source.name + ": " + std::to_string(source.passedOver) +
                           " keys that are no currency code were passed over";
  std::fprintf(stderr, "fexora-publish: %s\n", oneLine(text).c_str());
}

void publish(const Options& options) {
  std::vector<Source> sources;
  for (const std::string& operand : options.sources) {
    sources.push_back(sources::readSource(operand, today()));
    checkAge(options, sources.back(), today());
    tellPassedOver(sources.back());
  }
  const auto contradiction = sources::contradictionIn(sources);
  if (contradiction && !options.force) throw rejection(*contradiction + "; see --force");
  const MergedRates rates = sources::merge(sources);
  checkCount(options, rates);
  const std::string text = answerText(sources, rates);
  if (options.output.empty()) return write(stdout, text);
  const auto published = readPublished(options.output);
  if (published && options.maxJump && !options.force) {
    checkChange(options, sources, rates, published->bytes, today());
  }
  replace(options, text, published);
}

int fail(Exit exit, std::string_view message) {
  std::fprintf(stderr, "fexora-publish: %s\n", oneLine(message).c_str());
  return static_cast<int>(exit);
}

int run(int count, char** words) {
  program::prepareProcess();
  // It then fails the write, which is reported.
  std::signal(SIGPIPE, SIG_IGN);
  try {
    const Options options = readOptions(count, words);
    if (options.answer) {
      write(stdout, *options.answer + "\n");
    } else {
      publish(options);
    }
    return static_cast<int>(Exit::done);
  } catch (const Rejection& rejection) {
    return fail(rejection.exit, rejection.message);
  } catch (const sources::SourceProblem& problem) {
    return fail(Exit::rejected, problem.message);
  } catch (const std::exception& error) {
    return fail(Exit::notWritten, error.what());
  }
}

}  // namespace
}  // namespace fexora::publish

int main(int count, char** words) {
  return fexora::publish::run(count, words);
}
