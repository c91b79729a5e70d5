// Cases that are texts without spaces, said in one text.
#pragma once

#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace fexora::test {

inline std::vector<std::string> words(const std::string& text) {
  std::istringstream in(text);
  return {std::istream_iterator<std::string>(in), {}};
}

}  // namespace fexora::test
