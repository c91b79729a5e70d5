// Stands in for the system's name look-up, for every library in the process: the name
// "silent.test" is never answered, "missing.test" does not exist, and all else goes to the system.
#pragma once

#include <atomic>

namespace fexora::test {

// A descriptor to which one byte is written when "silent.test" is asked for; -1: none.
extern std::atomic<int> silentNameAsked;

}  // namespace fexora::test
