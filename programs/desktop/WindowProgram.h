// What both programs do before they have a window.
#pragma once

#include <QApplication>

namespace fexora::desktop {

// Before the application: --help and --version are answered without a display, too.
void answerWithoutDisplay(int count, char** arguments);

// Names and language of a program; before any widget. `id` is that of its .desktop file.
void prepareApplication(QApplication& application, const QString& id, const QString& name);

struct CommandLine {
  QStringList words;
  bool isService;  // the session bus started the program, and says what it wants
};

// Ends the process after --help or --version; else what stands on the command line. Options begin
// with two hyphens, but for -h and -v: "-5" is an amount.
CommandLine commandLineOf(QApplication& application, const QString& purpose,
                          const QString& operands);

// Shows the window, of a service only when it is wanted, and runs until it is closed or a signal
// asks for the end. A service that nobody wants for ten seconds ends. The icon comes once the
// window is painted. What main() returns.
int run(const CommandLine& line, QWidget& window);

}  // namespace fexora::desktop
