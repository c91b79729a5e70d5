// The two windows' programs, and opening one from the other.
#pragma once

#include <QString>
#include <QStringList>

namespace fexora::desktop {

enum class Companion { converter, today };

// Beside the running program, where both are installed.
QString companionPath(Companion which);
// Starts it, as a process of its own that outlives this one. False when it cannot be started.
bool openCompanion(Companion which, const QStringList& words = {});

}  // namespace fexora::desktop
