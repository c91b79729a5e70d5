#include "fexora/catalogue/CodeIndex.h"

#include <algorithm>
#include <bit>

#include "fexora/platform/text/Text.h"

namespace fexora {
namespace {

// To how small a part of its bytes a text can come in the canonical form: the sign for the kelvin,
// of three bytes, is a K there.
constexpr std::size_t kMostShrinking = 3;

// FNV-1a: most codes have three letters, and nobody outside chooses what is in the index.
std::size_t hashOfCode(std::string_view code) noexcept {
  std::uint64_t hash = 0xcbf29ce484222325;
  for (const char c : code) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3;
  return static_cast<std::size_t>(hash);
}

}  // namespace

CodeIndex::CodeIndex(const std::vector<CurrencyRef>& list, Text& text) : list_(list) {
  const auto isPlain = [](const CurrencyRef& currency) { return isAscii(currency->code()); };
  if (!std::all_of(list.begin(), list.end(), isPlain)) {
    canonical_.reserve(list.size());
    for (const CurrencyRef& currency : list) {
      canonical_.push_back(text.canonical(currency->code()));
    }
  }
  slots_.assign(std::bit_ceil(2 * list.size() + 1), kNoPlace);
  for (std::uint32_t place = 0; place < list.size(); ++place) {
    const std::string_view code = codeAt(place);
    longest_ = std::max(longest_, code.size());
    std::uint32_t& slot = slots_[slotOf(code)];
    if (slot != kNoPlace) continue;
    slot = place;
    ++count_;
  }
}

std::string_view CodeIndex::codeAt(std::uint32_t place) const {
  return canonical_.empty() ? std::string_view(list_[place]->code()) : canonical_[place];
}

std::size_t CodeIndex::slotOf(std::string_view canonical) const {
  std::size_t slot = hashOfCode(canonical) & (slots_.size() - 1);
  while (slots_[slot] != kNoPlace && codeAt(slots_[slot]) != canonical) {
    slot = (slot + 1) & (slots_.size() - 1);
  }
  return slot;
}

std::uint32_t CodeIndex::placeOf(std::string_view code, Text& text) const {
  if (code.size() > kMostShrinking * longest_) return kNoPlace;
  return slots_[isAscii(code) ? slotOf(code) : slotOf(text.canonical(code))];
}

}  // namespace fexora
