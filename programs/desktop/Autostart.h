// Whether the Today widget opens when the person logs in: an entry in the desktop's autostart
// folder.
#pragma once

namespace fexora::desktop {

bool startsTodayAtLogin();
// False when the entry cannot be written or taken away.
bool setStartsTodayAtLogin(bool starts);

}  // namespace fexora::desktop
