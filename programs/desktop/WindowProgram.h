// What both programs do before they have a window.
#pragma once

#include <QApplication>

namespace fexora::desktop {

// Names, icon and language of a program; before any widget. `id` is that of its .desktop file.
void prepareApplication(QApplication& application, const QString& id, const QString& name);

// Ends the process after --help or --version; else what stands on the command line.
QStringList wordsOf(QApplication& application, const QString& purpose, const QString& operands);

}  // namespace fexora::desktop
