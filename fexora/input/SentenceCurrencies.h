// The currencies in a sentence: codes, signs, whole names, countries, coins.
// One thread at a time; lives as long as its sentence is read.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fexora/catalogue/CurrencyManager.h"
#include "fexora/catalogue/CurrencyNaming.h"
#include "fexora/input/SentenceTokens.h"
#include "fexora/input/TypedAmount.h"

namespace fexora {

// One currency, where it stands.
struct Mention {
  CurrencyRef currency;
  TypedAmount::CurrencyBy by = TypedAmount::CurrencyBy::code;
  NameKind kind = NameKind::currency;  // of a name
  double parts = 1;                    // of these make one: 100 for cents
  // A plain word or a unit as well, in small letters: doubtful where nothing else speaks for it.
  bool isPlain = false;
  std::size_t first = 0;  // its tokens
  std::size_t last = 0;   // after the last one

  bool isMetal() const;
};

class SentenceCurrencies {
 public:
  // All of them outlive this object. Without `names` only codes and signs are known, and nothing is
  // opened.
  SentenceCurrencies(const SentenceTokens& tokens, const CurrencyManager& catalogue,
                     std::string_view locale, const CurrencyNaming* names)
      : tokens_(tokens),
        catalogue_(catalogue),
        locale_(locale),
        names_(names),
        known_(tokens.all().size()) {}

  // The longest one that begins with this token; nothing for a word between and for no currency.
  const std::optional<Mention>& at(std::size_t token) const;
  // The currency of a code in any case that is part of a word ("5kusd"), or of a sign there.
  std::optional<Mention> in(std::string_view part, std::size_t token) const;
  // Whether the sign of `mention` is one that `other` is written with as well: "$" and CAD.
  bool isSignOf(const Mention& mention, const Mention& other) const;

 private:
  std::optional<Mention> found(std::size_t token) const;
  std::optional<Mention> single(std::size_t token) const;
  std::optional<Mention> several(std::size_t token) const;
  std::optional<Mention> severalNamed(std::size_t token) const;
  std::optional<Mention> nameLikeCode(std::string_view typed) const;
  std::optional<Mention> code(std::string_view typed) const;
  std::optional<Mention> sign(std::string_view typed) const;
  std::optional<Mention> name(std::string_view typed) const;
  std::optional<Mention> coins(std::size_t token) const;
  std::optional<Mention> wholeOf(std::string_view code) const;
  std::optional<std::string_view> coinsAt(std::size_t token) const;

  const SentenceTokens& tokens_;
  const CurrencyManager& catalogue_;
  std::string_view locale_;
  const CurrencyNaming* names_;
  // What was found at each token that was asked for.
  mutable std::vector<std::optional<std::optional<Mention>>> known_;
};

}  // namespace fexora
