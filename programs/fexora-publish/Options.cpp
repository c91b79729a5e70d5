#include "programs/fexora-publish/Options.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include <CLI/CLI.hpp>

#include "programs/fexora-publish/Rejection.h"
#include "programs/shared/Words.h"

namespace fexora::publish {
namespace {

constexpr const char* kPurpose =
    "Makes the rates service's answer, rates.json, from one or more sources: a euro reference XML, "
    "a dollar JSON or a CSV of \"code,rate\" in units that one dollar buys. Later sources fill "
    "what earlier ones lack. Whatever is wrong with a source, nothing is written. A SOURCE is a "
    "file, or - for standard input.";

constexpr std::array<std::string_view, 4> kWithValue = {"--output", "--max-age", "--min-count",
                                                        "--max-jump"};

void addOptions(CLI::App& app, Options& options, bool& version) {
  using program::addNumber;
  app.set_help_flag("--help", "Print this help");
  app.add_option("--output", options.output,
                 "File to replace; standard output without it, or with -")
      ->type_name("FILE");
  addNumber(app, "--max-age", options.maxAge, "Reject a source older than so many days")
      ->type_name("DAYS");
  addNumber(app, "--min-count", options.minCount, "Reject fewer codes (1)")->type_name("N");
  addNumber(app, "--max-jump", options.maxJump, "Reject a larger change to the published file")
      ->type_name("PERCENT");
  app.add_flag("--force", options.force, "Publish whatever the change");
  app.add_flag("--version", version, "Print the version");
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
  CLI::App app(kPurpose, "fexora-publish");
  bool version = false;
  addOptions(app, options, version);
  auto sorted = program::sortWords({words + 1, words + count}, kWithValue);
  options.sources = std::move(sorted.operands);
  try {
    program::parseOptions(app, std::move(sorted.options));
  } catch (const CLI::CallForHelp&) {
    options.answer = program::helpText(app, "SOURCE…");
    return options;
  }
  if (options.output == "-") options.output.clear();
  if (version) {
    options.answer = "fexora-publish " FEXORA_VERSION;
  } else {
    check(options);
  }
  return options;
} catch (const CLI::ParseError& error) {
  throw rejection(error.what());
}

}  // namespace fexora::publish
