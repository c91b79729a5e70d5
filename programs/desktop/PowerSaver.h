// Whether the desktop asks its programs to save power.
#pragma once

namespace fexora::desktop {

// By the desktop portal's monitor of power profiles; false where there is none. Waits for its
// answer for a fifth of a second at most. Main thread.
bool savesPower();

}  // namespace fexora::desktop
