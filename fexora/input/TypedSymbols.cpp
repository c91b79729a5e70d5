#include "fexora/input/TypedSymbols.h"

#include <algorithm>
#include <iterator>

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

bool isTypedLetter(char32_t character) noexcept {
  if (character < 0x80) {
    return (character | 0x20U) >= U'a' && (character | 0x20U) <= U'z';
  }
  struct Range {
    char32_t first, last;
  };
  // Joiners stand within words. Latin-1 signs, General Punctuation up to Miscellaneous Symbols and
  // Arrows without the letters between, CJK punctuation, the Arabic marks, and their presentation
  // and full-width forms.
  constexpr Range kOthers[] = {
      {0x0080, 0x00A9}, {0x00AB, 0x00B4}, {0x00B6, 0x00B9}, {0x00BB, 0x00BF}, {0x00D7, 0x00D7},
      {0x00F7, 0x00F7}, {0x0600, 0x060F}, {0x061B, 0x061F}, {0x066A, 0x066D}, {0x06D4, 0x06D4},
      {0x09F2, 0x09FB}, {0x0E3F, 0x0E3F}, {0x2000, 0x200B}, {0x200E, 0x20FF}, {0x2190, 0x2BFF},
      {0x3001, 0x3004}, {0x3007, 0x3020}, {0x30FB, 0x30FB}, {0xFDFC, 0xFDFC}, {0xFE10, 0xFE6F},
      {0xFFE0, 0xFFEE}, {0xFFFD, 0xFFFD}};
  return std::none_of(std::begin(kOthers), std::end(kOthers), [character](const Range& range) {
    return character >= range.first && character <= range.last;
  });
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
  text.reserve(run.size());
  for (const TypedSymbol& symbol : run) {
    // Most are ASCII.
    if (symbol.sign < 0x80) {
      text += static_cast<char>(symbol.sign);
    } else {
      appendUtf8(text, symbol.sign);
    }
  }
  return text;
}

}  // namespace fexora
