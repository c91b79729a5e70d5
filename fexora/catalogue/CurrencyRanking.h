// Ranked search over a catalogue, as people search: CurrencyManager::rankedCurrencies is defined
// here.
//
// A text is looked for in codes, signs (see CurrencyFacts.h), names and the names of the countries
// and territories where a currency is used or was. Names are the host's and the English ones; those
// of countries are the Unicode CLDR's in the language of the host's strings, in English and in the
// language of most people there, so "Deutschland" is found in every language, and a few English
// ones that people type all the same ("USA"). Case, accents and the marks between words do not
// count (Text::folded).
//
// Of several words each must begin a word of a name or a country, in any order. From four letters
// on, one word may have one slip of the finger: a letter too much, too few, another one, or two
// that changed places. Eight words are looked at; with more only names that hold the whole text
// match.
//
// Order, and within each the catalogue's:
//   1. the text is the code            5. its words begin words of the name
//   2. it is a sign                    6. its words begin words of a country's name
//   3. the code begins with it         7. it is inside of the code, the name or a country's name
//   4. the name begins with it         8. as 5 and 6 or the code, but for one slip
//
// At most `limit` records are given, those equal to one in `exclude` left out; none for a limit of
// 0 or less, for an empty text, and where there is no memory. A machine without the text module
// knows no countries and folds ASCII only.
//
// The keys are made at the first search, and again after the host's strings, their language, the
// facts or a record's code have changed. Any thread, several searches at once.
#pragma once

#include "fexora/catalogue/CurrencyManager.h"
