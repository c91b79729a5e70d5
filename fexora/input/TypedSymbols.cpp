#include "fexora/input/TypedSymbols.h"

#include "fexora/platform/text/DecimalDigits.h"
#include "fexora/platform/text/Utf8.h"

namespace fexora {

std::optional<char32_t> typedForm(char32_t character) noexcept {
  if (character < 0x80) return character;
  if (const auto digit = decimalDigit(character)) return U'0' + static_cast<char32_t>(*digit);
  switch (character) {
    case 0x061C:
    case 0x200B:
    case 0x200E:
    case 0x200F:
      return std::nullopt;
    case 0x00A0:
    case 0x2009:
    case 0x202F:
    case 0x3000:
      return U' ';
    case 0x2019:
      return U'\'';
    case 0x2212:
      return U'-';
    default:
      break;
  }
  // The full-width forms stand in the order of ASCII.
  const bool isFullWidth = character >= 0xFF01 && character <= 0xFF5E;
  return isFullWidth ? character - 0xFF01 + U'!' : character;
}

bool isTypedDigit(const TypedSymbol& symbol) noexcept {
  return symbol.sign >= U'0' && symbol.sign <= U'9';
}

TypedSymbols typedSymbols(std::string_view text) {
  TypedSymbols typed;
  typed.symbols.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const std::string_view rest = text.substr(at);
    const std::size_t length = utf8Length(rest);
    if (length == 0) {
      typed.broken = at;
      break;
    }
    if (const auto form = typedForm(codePoint(rest))) typed.symbols.push_back({*form, at});
    at += length;
  }
  return typed;
}

TypedRun trimmed(TypedRun run) noexcept {
  while (!run.empty() && run.front().sign == U' ') run = run.subspan(1);
  while (!run.empty() && run.back().sign == U' ') run = run.first(run.size() - 1);
  return run;
}

std::string spelled(TypedRun run) {
  std::string text;
  for (const TypedSymbol& symbol : run) appendUtf8(text, symbol.sign);
  return text;
}

}  // namespace fexora
