#include "fexora/catalogue/NearCurrencies.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <tuple>

#include "fexora/catalogue/EnglishNames.h"
#include "fexora/catalogue/MostTraded.h"
#include "fexora/catalogue/RankingKeys.h"
#include "fexora/platform/text/AsciiCase.h"

namespace fexora {
namespace {

constexpr std::size_t kLongestSlipped = 16;
constexpr std::size_t kOfCodes = 2;
constexpr std::size_t kOfNames = 3;
constexpr std::size_t kOfCountries = 4;

bool isNearly(Match match, std::size_t letters) {
  if (match <= Match::wholeCountry) return true;
  if (match == Match::codeStart) return letters >= kOfCodes;
  if (match <= Match::wordStart) return letters >= kOfNames;
  return match == Match::country || match == Match::slip ? letters >= kOfCountries : false;
}

enum class Slip : std::uint8_t { swapped, tooMany, another, missing, none };

// The one slip between the whole of both.
Slip slipOf(std::string_view code, std::string_view typed) {
  while (!code.empty() && !typed.empty() && code.front() == typed.front()) {
    code.remove_prefix(1);
    typed.remove_prefix(1);
  }
  while (!code.empty() && !typed.empty() && code.back() == typed.back()) {
    code.remove_suffix(1);
    typed.remove_suffix(1);
  }
  if (code.size() == 2 && typed.size() == 2) {
    return code[0] == typed[1] && code[1] == typed[0] ? Slip::swapped : Slip::none;
  }
  if (code.empty() && typed.size() == 1) return Slip::tooMany;
  if (code.size() != 1 || typed.size() > 1) return Slip::none;
  return typed.empty() ? Slip::missing : Slip::another;
}

}  // namespace

class NearSearch {
 public:
  NearSearch(const CurrencyManager& catalogue, std::string_view text)
      : catalogue_(catalogue), text_(text) {}

  std::vector<CurrencyRef> find(std::size_t limit) {
    const std::size_t letters = catalogue_.platform_.text->characterCount(text_);
    const auto matches = catalogue_.rankingKeys()->matches(*catalogue_.platform_.text, text_);
    for (std::size_t place = 0; place < matches.size(); ++place) {
      if (isNearly(matches[place], letters)) add(static_cast<int>(matches[place]), place);
    }
    if (order_.empty() && letters >= kOfCodes && text_.size() <= kLongestSlipped) addSlips();
    std::sort(order_.begin(), order_.end());
    std::vector<CurrencyRef> near;
    for (const auto& [rank, traded, length, place] : order_) {
      if (near.size() < limit) near.push_back(catalogue_.currencies()[place]);
    }
    return near;
  }

 private:
  void add(int rank, std::size_t place) {
    const std::string& code = catalogue_.currencies()[place]->code();
    // A short name has less besides what was typed: "Bitcoin", "Bitcoin Cash".
    order_.emplace_back(rank, tradedPlace(code), englishName(code).value_or(code).size(), place);
  }

  void addSlips() {
    const std::string typed = ascii::uppercased(text_);
    for (std::size_t place = 0; place < catalogue_.currencies().size(); ++place) {
      const std::string& code = catalogue_.currencies()[place]->code();
      const Slip slip = slipOf(code, typed);
      // Many codes are another letter, or a missing one, away.
      const bool isLikely = slip <= Slip::tooMany || tradedPlace(code) < tradedPlace({});
      if (slip != Slip::none && isLikely) add(static_cast<int>(slip), place);
    }
  }

  const CurrencyManager& catalogue_;
  std::string_view text_;
  std::vector<std::tuple<int, std::size_t, std::size_t, std::size_t>> order_;
};

std::vector<CurrencyRef> nearCurrencies(const CurrencyManager& catalogue, std::string_view text,
                                        std::size_t limit) {
  return NearSearch(catalogue, text).find(limit);
}

}  // namespace fexora
