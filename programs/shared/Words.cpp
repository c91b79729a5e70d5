#include "programs/shared/Words.h"

#include <algorithm>

#include "programs/shared/EditDistance.h"

namespace fexora::program {
namespace {

// CLI11 would take the next word for the value of "--name=".
void requireValue(const std::string& name, std::string_view value) {
  if (!value.empty()) return;
  throw OptionError(name + " needs a value; one that begins with -- is written " + name + "=--…");
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

}  // namespace fexora::program
