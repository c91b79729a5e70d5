// Host strings for a host without any of its own: the Unicode CLDR's name of each currency in a
// language, else the English name from the library's own table, which also has what the CLDR lacks
// (crypto currencies, some territories). English asks the table first and so opens no text module.
#pragma once

#include <mutex>
#include <string>
#include <utility>

#include "fexora/platform/strings/HostStrings.h"
#include "fexora/platform/text/Text.h"

namespace fexora {

class FEXORA_API CurrencyNames final : public HostStrings {
 public:
  // `text` outlives this object. An empty language follows Locale::currentLanguage().
  explicit CurrencyNames(Text& text = Text::process(), std::string language = {});

  std::optional<std::string> string(std::string_view key) override;
  std::string language() override;
  std::uint64_t generation() override;

  // Any thread.
  void setLanguage(std::string language);

 private:
  Text& text_;
  std::mutex mutex_;
  std::string language_;
  // The count of Locale::changes() and the language that `generation_` stands for.
  using Seen = std::pair<std::uint64_t, std::string>;
  Seen seen_;
  std::uint64_t generation_ = newGeneration();
};

}  // namespace fexora
