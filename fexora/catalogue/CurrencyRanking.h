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
// Order, and within each the most traded first, then the catalogue's:
//   1. the text is the code                  6. the name begins with it
//   2. it is a sign                          7. its words begin words of the name
//   3. it is a whole name, in a plural form  8. its words begin words of a country's name
//      too, or what names share ("dollar")   9. it is inside of the code or either name
//   4. it is the whole name of a country     10. as 7 and 8 or the code, but for one slip
//   5. the code begins with it
//
// At most `limit` records are given, those equal to one in `exclude` left out; none for a limit of
// 0 or less, for an empty text, and where there is no memory. A machine without the text module
// knows no countries and folds ASCII only.
//
// The keys are made at the first search, and again after the host's strings, their language, the
// facts or a record's code have changed. Any thread, several searches at once.
#pragma once

#include "fexora/catalogue/CurrencyManager.h"
