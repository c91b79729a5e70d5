// Messages for people, whatever they quote from the outside.
#pragma once

#include <string>
#include <string_view>

namespace fexora::program {

// The text in one line of at most 500 characters, cut between characters.
std::string oneLine(std::string_view text);

}  // namespace fexora::program
