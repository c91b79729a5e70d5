// Free-text search over a catalogue: CurrencyManager::currenciesForString is defined here.
//
// The query, the codes and the localized names are compared in lower case (Unicode's, the same in
// every locale); canonically equivalent texts are equal, and a text contains another as a run of
// whole user-perceived characters only. Nothing else is folded or trimmed.
//
//  1. A query of exactly three characters first gives every record whose code it is, those in
//     `exclude` left out. The counter starts at their number.
//  2. Then all records in catalogue order: one whose name or code contains the query, and that is
//     not equal to one already given, counts; it is given too unless it is in `exclude`.
//  3. After each record, matching or not, the walk ends when the counter equals `limit`.
//
// So `limit` bounds the matches found and not those given; with a limit equal to the starting count
// the walk ends after its first record if that one does not count, and with a smaller limit, or
// once the first record has counted, it goes to the end. An empty query gives nothing.
//
// The lower-cased keys are kept for one generation of the host's strings. Any thread, several
// searches at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "fexora/catalogue/Currency.h"
#include "fexora/platform/strings/HostStrings.h"
#include "fexora/platform/text/Text.h"

namespace fexora {

// The keys of one catalogue, in one block of bytes with places to look up where a hit belongs. A
// record is named by its place in the catalogue's list. Immutable: any thread.
class SearchKeys {
 public:
  SearchKeys(const std::vector<CurrencyRef>& currencies, HostStrings& strings, Text& text);

  // The form in which keys and queries are compared.
  static std::string keyOf(Text& text, std::string_view plain);

  // Of the strings from which the keys were made; zero: not to be kept.
  std::uint64_t generation() const noexcept { return generation_; }
  std::uint32_t size() const noexcept { return static_cast<std::uint32_t>(groups_.size()); }

  // Equal records are one group, named by its first place. A record with an empty code equals no
  // other and is in kNoGroup.
  static constexpr std::uint32_t kNoGroup = UINT32_MAX;
  std::uint32_t group(std::uint32_t place) const noexcept { return groups_[place]; }

  // The places of the records with this code key, ascending.
  std::span<const std::uint32_t> withCode(std::string_view key) const;

  // The first record from `place` on whose name or code contains `key`, or size().
  std::uint32_t nextContaining(std::string_view key, std::uint32_t place) const;

 private:
  void append(std::string_view key, Text& text);
  void makeIndexes();
  bool isBreak(std::size_t at) const noexcept;
  std::uint32_t placeAt(std::size_t at) const noexcept;
  std::string_view codeKey(std::uint32_t place) const noexcept;

  const std::uint64_t generation_;
  // For each record its name key, unless that is the code key, and its code key, each with a
  // separator byte after it that no key holds.
  std::string block_;
  std::vector<std::size_t> starts_;  // of each record in the block, and the end
  std::vector<std::size_t> codes_;   // of each record's code key in the block
  std::vector<std::uint32_t> groups_;
  std::vector<std::uint32_t> byCode_;  // places ordered by code key, then by place
  // For each kStep bytes of the block, the record in which they begin.
  std::vector<std::uint32_t> steps_;
  // A bit for each byte: whether a character starts there. Empty when one starts at every byte.
  std::vector<bool> breaks_;
};

}  // namespace fexora
