// The currencies of whole names, as a sentence has them: never the beginning of a word.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "fexora/catalogue/Currency.h"
#include "fexora/catalogue/CurrencySigns.h"
#include "fexora/catalogue/WholeNames.h"
#include "fexora/platform/text/Text.h"

namespace fexora {

class CurrencyManager;
class RankingKeys;

struct NamedCurrency {
  CurrencyRef currency;
  NameKind kind;
  SignReading::Why why;  // of a name that several share
};

// One thread at a time; short-lived, since it keeps the names of one moment.
class CurrencyNaming {
 public:
  // Makes the catalogue's keys, unless they are kept. All three outlive this object.
  CurrencyNaming(const CurrencyManager& catalogue, Text& text, std::string_view locale);

  // In any case, with any marks between its words; nothing for a text that is no name. Of several
  // currencies it is the one of the locale's region, else the most traded one.
  std::optional<NamedCurrency> find(std::string_view name) const;
  // Whether any name of several words begins with the first word of `text`.
  bool mayGoOn(std::string_view text) const;

 private:
  const CurrencyManager& catalogue_;
  Text& text_;
  std::string_view locale_;
  std::shared_ptr<const RankingKeys> keys_;
};

}  // namespace fexora
