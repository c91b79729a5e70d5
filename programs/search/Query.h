// What people type into a search that may be an amount of money.
#pragma once

#include <optional>
#include <string>

#include "fexora/fexora.h"

namespace fexora::search {

// The sentence about money that `query` is. Nothing where a word of it is something else, where
// plain words or units could be meant as well, for a currency alone, and for two currencies without
// an amount that are not both codes or signs: a search for something else is left alone.
std::optional<Sentence> sentenceIn(const std::string& query);

}  // namespace fexora::search
