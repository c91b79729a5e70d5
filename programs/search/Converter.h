// The converter's window.
#pragma once

#include <string>
#include <vector>

#include <gio/gio.h>

namespace fexora::search {

// Has the session bus start the converter, where none is open, and gives it these words. Waits for
// nothing; without the converter's service nothing happens.
void openConverter(GDBusConnection* bus, const std::vector<std::string>& words);

}  // namespace fexora::search
