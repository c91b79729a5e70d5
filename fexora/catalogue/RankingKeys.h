// What the ranked search compares a typed text with: see CurrencyRanking.h. Immutable: any thread.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "fexora/catalogue/Currency.h"
#include "fexora/catalogue/WholeNames.h"
#include "fexora/platform/strings/HostStrings.h"
#include "fexora/platform/text/Text.h"

namespace fexora {

// How a text matches a currency, the best first.
enum class Match : std::uint8_t {
  code,
  sign,
  wholeName,
  wholeCountry,
  codeStart,
  nameStart,
  wordStart,
  country,
  inside,
  slip,
  none,
};

class RankingKeys {
 public:
  // What keys are made of, as it was before.
  struct Version {
    std::uint64_t strings;  // HostStrings::generation(); zero: not to be kept
    std::uint64_t facts;    // currencyFactsChanges()
    std::uint64_t codes;    // how often records' codes have changed
    std::string language;   // of the host's strings
    bool operator==(const Version&) const = default;
  };

  RankingKeys(const std::vector<CurrencyRef>& currencies, HostStrings& strings, Text& text,
              Version version);

  const Version& version() const noexcept { return version_; }

  // By the place in the catalogue how each record matches. All none for a text without any letter,
  // digit or sign.
  std::vector<Match> matches(Text& text, std::string_view typed) const;

  // What a whole name stands for, or null.
  const WholeName* named(Text& text, std::string_view typed) const;
  // Whether a whole name of several words begins with the first word of `typed`.
  bool mayGoOn(Text& text, std::string_view typed) const;

 private:
  struct Sign {
    std::string text;
    std::uint32_t place;
  };
  // A name of currencies, in the form in which texts are compared.
  struct Name {
    std::string text;
    bool isCountry;
    std::vector<std::uint32_t> places;
  };
  struct Word {
    std::string text;
    std::vector<std::uint32_t> names;  // by their place in names_
  };
  // Which words of a typed text, a bit each, fit words of a place's names.
  struct Fit {
    std::uint8_t name = 0;  // of the currency
    std::uint8_t any = 0;   // that or a country
    std::uint8_t slip = 0;  // either of them but for one slip
  };

  // The places of the currencies of each country or territory.
  using Regions = std::map<std::string, std::vector<std::uint32_t>, std::less<>>;
  void addFacts(Text& text, std::string_view code, std::uint32_t place, Regions& regions);
  void addRegions(Text& text, const Regions& regions);
  void addWholeNames(const std::vector<CurrencyRef>& currencies, HostStrings& strings, Text& text);
  void addCountry(Text& text, std::string_view name, std::string_view region,
                  const std::vector<std::uint32_t>& places);
  void addName(Text& text, std::string_view name, bool isCountry,
               const std::vector<std::uint32_t>& places);
  void makeWords();

  void matchCodes(std::string_view folded, std::vector<Match>& best) const;
  void matchNames(std::string_view typed, std::vector<Match>& best) const;
  void matchWords(std::string_view typed, std::vector<Match>& best) const;
  void fitStarts(std::string_view word, std::uint8_t bit, std::vector<Fit>& fits) const;
  void fitSlips(std::string_view word, std::uint8_t bit, std::vector<Fit>& fits) const;

  const Version version_;
  std::vector<std::string> codes_;
  std::vector<Sign> signs_;
  std::vector<Name> names_;
  std::vector<Word> words_;  // by text
  WholeNames whole_;
};

}  // namespace fexora
