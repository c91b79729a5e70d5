// The converter, a window on the person's store.
#include <QApplication>

#include "programs/converter/ConverterWindow.h"
#include "programs/desktop/Appearance.h"
#include "programs/desktop/Companion.h"
#include "programs/desktop/Refresher.h"
#include "programs/desktop/SingleInstance.h"
#include "programs/desktop/WindowProgram.h"
#include "programs/shared/Process.h"

int main(int count, char** arguments) {
  using namespace fexora::desktop;
  fexora::program::prepareProcess();
  answerWithoutDisplay(count, arguments);
  QApplication application(count, arguments);
  const Desk desk = Desk::process();
  const QString id = QStringLiteral("org.fexora.Fexora");
  prepareApplication(application, id, QStringLiteral("fexora-converter"));
  const CommandLine line =
      commandLineOf(application, QStringLiteral("Converts an amount, in a window."),
                    QStringLiteral("[AMOUNT [CURRENCY [CURRENCY…]]]"));
  SingleInstance instance(id);
  if (instance.handOver(line.words)) return 0;
  Appearance appearance(desk);
  ConverterWindow window(desk, appearance);
  if (!line.words.isEmpty()) window.take(line.words);
  QObject::connect(&instance, &SingleInstance::activated, &window, [&](const QStringList& others) {
    if (!others.isEmpty()) window.take(others);
    window.activate();
    window.refresher().startByItself();
  });
  QObject::connect(&instance, &SingleInstance::actionWanted, &window, [](const QString& name) {
    if (name == QLatin1String("today")) openCompanion(Companion::today);
  });
  // A service may be wanted for Today alone, which asks nobody.
  if (!line.isService) window.refresher().startByItself();
  return run(line, window);
}
