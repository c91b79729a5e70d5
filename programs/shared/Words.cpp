#include "programs/shared/Words.h"

#include <algorithm>

#include <CLI/CLI.hpp>

#include "fexora/platform/text/NumberText.h"

#include "programs/shared/EditDistance.h"

namespace fexora::program {
namespace {

// CLI11 would take the next word for the value of "--name=".
void requireValue(const std::string& name, std::string_view value) {
  if (!value.empty()) return;
  throw CLI::ArgumentMismatch(name + " needs a value; one that begins with -- is written " + name +
                              "=--…");
}

template <class Number, class Parse>
CLI::Option* addParsed(CLI::App& app, const char* name, std::optional<Number>& number,
                       const char* purpose, Parse parse) {
  const auto take = [&number, parse, name](const std::string& text) {
    number = parse(text);
    if (!number) throw CLI::ConversionError(text, name);
  };
  return app.add_option_function<std::string>(name, take, purpose);
}

std::vector<std::string> optionNames(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::Option* option : app.get_options()) {
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  }
  return names;
}

}  // namespace

SortedWords sortWords(const std::vector<std::string>& words,
                      std::span<const std::string_view> withValue) {
  SortedWords sorted;
  for (auto word = words.begin(); word != words.end(); ++word) {
    if (*word == "--") {
      sorted.operands.insert(sorted.operands.end(), word + 1, words.end());
      break;
    }
    if (*word == "-h") {
      sorted.options.emplace_back("--help");
      continue;
    }
    if (!word->starts_with("--")) {
      sorted.operands.push_back(*word);
      continue;
    }
    std::string option = *word;
    const std::string name = option.substr(0, option.find('='));
    if (std::find(withValue.begin(), withValue.end(), name) != withValue.end()) {
      const bool takesNext =
          name == option && word + 1 != words.end() && !word[1].starts_with("--");
      // Joined, so that a value like -5 is not taken for an option.
      if (takesNext) option += "=" + *++word;
      requireValue(name, std::string_view(option).substr(std::min(name.size() + 1, option.size())));
    }
    sorted.options.push_back(std::move(option));
  }
  std::reverse(sorted.options.begin(), sorted.options.end());
  return sorted;
}

std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
  return text;
}

std::string offerOf(std::string_view typed, const std::vector<std::string>& words) {
  constexpr std::size_t kMostSlips = 2;
  // Longer ones are no mistyped words, and the distance takes time by length.
  constexpr std::size_t kLongest = 32;
  if (typed.size() > kLongest) return {};
  std::size_t fewest = kMostSlips + 1;
  const std::string* nearest = nullptr;
  for (const std::string& word : words) {
    const std::size_t slips = editDistance(typed, word);
    if (slips < fewest) nearest = &word;
    fewest = std::min(fewest, slips);
  }
  return nearest == nullptr ? "" : "; did you mean " + *nearest + "?";
}

void parseOptions(CLI::App& app, std::vector<std::string> options) {
  const auto typed = options;
  try {
    app.parse(std::move(options));
  } catch (const CLI::ExtrasError&) {
    for (auto option = typed.rbegin(); option != typed.rend(); ++option) {
      const std::string name = option->substr(0, option->find('='));
      if (app.get_option_no_throw(name) != nullptr) continue;
      throw CLI::ParseError("there is no option " + name + offerOf(name, optionNames(app)),
                            CLI::ExitCodes::ExtrasError);
    }
    throw;
  }
}

CLI::Option* addNumber(CLI::App& app, const char* name, std::optional<std::int64_t>& number,
                       const char* purpose) {
  return addParsed(app, name, number, purpose, parseInteger);
}

CLI::Option* addNumber(CLI::App& app, const char* name, std::optional<double>& number,
                       const char* purpose) {
  return addParsed(app, name, number, purpose, parseDouble);
}

std::string helpText(const CLI::App& app, std::string_view operands) {
  constexpr std::string_view kOptions = "[OPTIONS]";
  std::string text = app.help();
  const auto at = text.find(kOptions);
  if (at != std::string::npos) text.insert(at + kOptions.size(), " " + std::string(operands));
  while (text.ends_with('\n')) text.pop_back();
  return text;
}

}  // namespace fexora::program
