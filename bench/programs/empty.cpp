// The limit of a program's start: C++ with its standard library, and next to nothing to do.
#include <cstdio>
#include <string>

int main(int, char** words) {
  const std::string name(words[0]);
  std::puts(name.c_str());
  return 0;
}
