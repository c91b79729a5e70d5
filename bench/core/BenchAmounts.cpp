// Typed amounts into numbers, against the conversion of the digits alone.
#include <charconv>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "bench/core/Bench.h"
#include "bench/support/Peers.h"

namespace fexora::bench {
namespace {

constexpr std::size_t kTexts = 200;

std::vector<std::string> typedTexts() {
  std::mt19937 random(1);  // NOLINT(cert-msc51-cpp): the same texts every time
  std::vector<std::string> texts;
  for (std::size_t i = 0; i < kTexts; ++i) {
    std::string text = std::to_string(random() % 100'000);
    if (i % 2 == 0) text += "." + std::to_string(random() % 100);
    texts.push_back(text);
  }
  return texts;
}

double digitsOnly(const std::vector<std::string>& texts) {
  double sum = 0;
  for (const std::string& text : texts) {
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    sum += value;
  }
  return sum;
}

double parsed(const std::vector<std::string>& texts) {
  double sum = 0;
  for (const std::string& text : texts) sum += parseAmount(text).value_or(0);
  return sum;
}

double read(const std::vector<std::string>& texts) {
  double sum = 0;
  for (const std::string& text : texts) sum += readAmount(text).value;
  return sum;
}

// Sentences that end alike: an amount, a source, a destination.
double readSentences(const std::vector<std::string>& texts, const char* ending) {
  double sum = 0;
  for (const std::string& text : texts) sum += readSentence(text + ending).amount.value;
  return sum;
}

void raceSentences(const std::vector<std::string>& texts, const std::string& named) {
  constexpr std::pair<const char*, const char*> kEndings[] = {
      {"codes", " usd in eur"}, {"signs", "€ to $"}, {"names", " dollars to euros"}};
  Race race("a sentence read, " + named);
  for (const auto& [name, ending] : kEndings) {
    race.add(
        name, [&texts, ending = ending] { return readSentences(texts, ending); }, kTexts);
  }
  race.run(0.5);
}

}  // namespace

void benchAmounts() {
  const std::vector<std::string> texts = typedTexts();
  for (const char* locale : {"en_US", "de_DE", ""}) {
    Locale::setCurrent(locale);
    const std::string named = *locale != '\0' ? locale : "the environment's locale";
    Race race("an amount parsed, " + named);
    race.add(
        "std::from_chars", [&] { return digitsOnly(texts); }, kTexts);
    race.add(
        "parseAmount", [&] { return parsed(texts); }, kTexts);
    race.add(
        "readAmount", [&] { return read(texts); }, kTexts);
    const AmountJob job{texts};
    Peers<AmountJob>::enter(race, job);
    race.run(0.5);
    raceSentences(texts, named);
  }
  Locale::setCurrent("");
}

}  // namespace fexora::bench
