// The converter's window.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace fexora::search {

// Starts fexora-converter with these words; false when it is not there or cannot be started.
// `ended` is called on the main context when that process is over: a session that counts processes
// by who started them would end it with this one.
bool openConverter(const std::vector<std::string>& words, std::function<void()> ended);

}  // namespace fexora::search
