// Which currencies a whole name stands for: never the beginning of one. Immutable once made: any
// thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace fexora {

// Why a name is one of a currency; where a text is several of them the first counts.
enum class NameKind : std::uint8_t {
  currency,  // its name, or that in a plural form
  popular,   // catalogue/PopularNames.h
  country,   // of where it is used
  shared,    // what the names of currencies end or begin with: "dollar"
};

struct WholeName {
  NameKind kind;
  // By their place in the catalogue: those in use before crypto currencies, these before withdrawn
  // ones, the most traded first. Of what is no whole name of a currency only the first of these
  // three that there are.
  std::vector<std::uint32_t> places;
};

class WholeNames {
 public:
  // The codes of the catalogue, in order.
  explicit WholeNames(std::vector<std::string> codes) : codes_(std::move(codes)) {}

  // `words` is a name as nameWords() gives it.
  void add(std::string_view words, NameKind kind, std::uint32_t place);
  // Names of currencies in one language: adds each, and the word that it shares with others, which
  // is the first or the last one, as in most of the names.
  using Names = std::vector<std::pair<std::string, std::uint32_t>>;
  void addLanguage(const Names& names);
  // Puts the places in order; nothing is added afterwards.
  void complete();

  const WholeName* find(const std::string& words) const;
  // Whether a name of several words begins with the first one of `words`.
  bool goesOnAfter(std::string_view words) const;

 private:
  int useOf(std::uint32_t place) const;
  void addShared(const Names& names, bool isLast);

  std::vector<std::string> codes_;
  std::unordered_map<std::string, WholeName> names_;
  std::unordered_set<std::string_view> firsts_;  // words of names_ that others follow
};

}  // namespace fexora
