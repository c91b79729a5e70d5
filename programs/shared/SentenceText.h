// Sentences about money (fexora/input/Sentence.h) in the words of a command line, and what is to be
// said of them in English, for the terminal and the desktop's search.
#pragma once

#include <string>
#include <vector>

#include "fexora/fexora.h"

namespace fexora::program {

// The words as one sentence. After a word with a sign that several share the next one is asked for,
// where it is a word of its own: '$100' CAD are US dollars, "$100 CAD" are Canadian ones.
std::string sentenceOf(const std::vector<std::string>& words);

// The sentence of these words, with its source. Throws a Failure that says what is wrong, where,
// and what is near.
Sentence readWords(const std::vector<std::string>& words);

// A line for each notice.
std::vector<std::string> noticeTexts(const Sentence& sentence);

}  // namespace fexora::program
