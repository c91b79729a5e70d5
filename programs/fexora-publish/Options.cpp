#include "programs/fexora-publish/Options.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "programs/fexora-publish/Rejection.h"
#include "programs/shared/OptionReader.h"
#include "programs/shared/Words.h"

namespace fexora::publish {
namespace {

constexpr const char* kPurpose =
    "Makes the rates service's answer, rates.json, from one or more sources: a euro reference XML, "
    "JSON (of the dollar, of another base, or a service's own answer) or a CSV of \"code,rate\" in "
    "units that one dollar buys. Later sources fill what earlier ones lack. Whatever is wrong with "
    "a source, nothing is written. A SOURCE is a file, or - for standard input.";

constexpr std::array<std::string_view, 4> kWithValue = {"--output", "--max-age", "--min-count",
                                                        "--max-jump"};

void addOptions(program::OptionReader& reader, Options& options, bool& version) {
  reader.addText("--output", options.output, "FILE",
                 "File to replace; standard output without it, or with -");
  reader.addNumber("--max-age", options.maxAge, "DAYS", "Reject a source older than so many days");
  reader.addNumber("--min-count", options.minCount, "N", "Reject fewer codes (1)");
  reader.addNumber("--max-jump", options.maxJump, "PERCENT",
                   "Reject a larger change to the published file");
  reader.addFlag("--force", options.force, "Publish whatever the change");
  reader.addFlag("--version", version, "Print the version");
}

bool isBound(const std::optional<double>& value) {
  return !value || (std::isfinite(*value) && *value >= 0);
}

void check(const Options& options) {
  if (options.sources.empty()) throw rejection("no source is named; see --help");
  if (std::count(options.sources.begin(), options.sources.end(), "-") > 1) {
    throw rejection("standard input can be read once only");
  }
  if (!isBound(options.maxAge)) throw rejection("--max-age takes a number of days from 0");
  if (options.minCount && *options.minCount < 0) {
    throw rejection("--min-count takes a whole number from 0");
  }
  if (!isBound(options.maxJump)) throw rejection("--max-jump takes a percentage from 0");
  if (options.maxJump && options.output.empty()) {
    throw rejection("--max-jump compares with the file of --output, which is missing");
  }
}

}  // namespace

Options readOptions(int count, char** words) try {
  Options options;
  program::OptionReader reader(kPurpose, "fexora-publish", "--help");
  bool version = false;
  addOptions(reader, options, version);
  auto sorted = program::sortWords({words + 1, words + count}, kWithValue);
  options.sources = std::move(sorted.operands);
  if (!reader.read(std::move(sorted.options))) {
    options.answer = reader.help("SOURCE…");
    return options;
  }
  if (options.output == "-") options.output.clear();
  if (version) {
    options.answer = "fexora-publish " FEXORA_VERSION;
  } else {
    check(options);
  }
  return options;
} catch (const program::OptionError& error) {
  throw rejection(error.what());
}

}  // namespace fexora::publish
