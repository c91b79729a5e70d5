// The Today widget, a process of its own on the person's store. It saves nothing there.
#include <QApplication>

#include "programs/desktop/Appearance.h"
#include "programs/desktop/Companion.h"
#include "programs/desktop/SingleInstance.h"
#include "programs/desktop/WindowProgram.h"
#include "programs/shared/Process.h"
#include "programs/today/TodayWindow.h"

int main(int count, char** arguments) {
  using namespace fexora::desktop;
  fexora::program::prepareProcess();
  answerWithoutDisplay(count, arguments);
  QApplication application(count, arguments);
  const Desk desk = Desk::process();
  const QString id = QStringLiteral("org.fexora.Today");
  prepareApplication(application, id, QStringLiteral("fexora-today"));
  const CommandLine line =
      commandLineOf(application, QStringLiteral("Shows the last amount in a small window."), {});
  SingleInstance instance(id);
  if (instance.handOver({})) return 0;
  Appearance appearance(desk);
  TodayWindow window(desk, appearance);
  QObject::connect(&instance, &SingleInstance::activated, &window, [&] {
    window.show();
    window.raise();
  });
  QObject::connect(&window, &TodayWindow::converterWanted, &window,
                   [] { openCompanion(Companion::converter); });
  return run(line, window);
}
