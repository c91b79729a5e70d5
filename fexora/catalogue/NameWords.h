// Names in the form in which they are compared. Any thread.
#pragma once

#include <string>
#include <string_view>

namespace fexora {

// The words of a folded text (Text::folded), parted by single blanks, without the marks between
// them; apostrophes join what stands beside them.
std::string nameWords(std::string_view folded);

}  // namespace fexora
