// What both programs do before they have a window.
#pragma once

#include <QApplication>

namespace fexora::desktop {

// Names, icon and language of a program; before any widget. `id` is that of its .desktop file.
void prepareApplication(QApplication& application, const QString& id, const QString& name);

struct CommandLine {
  QStringList words;
  bool isService;  // the session bus started the program, and says what it wants
};

// Ends the process after --help or --version; else what stands on the command line.
CommandLine commandLineOf(QApplication& application, const QString& purpose,
                          const QString& operands);

// Shows the window; of a service only when it is wanted. One that nobody wants for ten seconds
// ends.
void showOf(const CommandLine& line, QWidget& window);

}  // namespace fexora::desktop
