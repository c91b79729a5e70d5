// The signals that ask a process to end: at the end of a session, and Ctrl+C.
#pragma once

namespace fexora::desktop {

// From now on they close the windows, which save what they hold, instead of ending the process
// where it stands. Once, before exec().
void endOnSignals();

// Whether one has come.
bool isEndingBySignal() noexcept;

}  // namespace fexora::desktop
