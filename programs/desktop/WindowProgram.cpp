#include "programs/desktop/WindowProgram.h"

#include <QCommandLineParser>
#include <QIcon>
#include <QTimer>
#include <QWidget>
#include <chrono>

#include "programs/desktop/Languages.h"

namespace fexora::desktop {

void prepareApplication(QApplication& application, const QString& id, const QString& name) {
  QApplication::setOrganizationName(QStringLiteral("fexora"));
  QApplication::setApplicationName(name);
  QApplication::setApplicationVersion(QStringLiteral(FEXORA_VERSION));
  QGuiApplication::setDesktopFileName(id);
  application.setWindowIcon(QIcon(QStringLiteral(":/icons/org.fexora.Fexora.svg")));
  applyLanguage();
}

CommandLine commandLineOf(QApplication& application, const QString& purpose,
                          const QString& operands) {
  QCommandLineParser parser;
  parser.setApplicationDescription(purpose);
  parser.addHelpOption();
  parser.addVersionOption();
  if (!operands.isEmpty()) parser.addPositionalArgument(QStringLiteral("words"), {}, operands);
  const QCommandLineOption service(
      QStringLiteral("service"), QStringLiteral("Wait for the session bus to say what it wants."));
  parser.addOption(service);
  // "-5" is an amount.
  parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
  parser.process(application);
  return {parser.positionalArguments(), parser.isSet(service)};
}

void showOf(const CommandLine& line, QWidget& window) {
  constexpr auto kPatience = std::chrono::seconds(10);
  if (!line.isService) {
    window.show();
    return;
  }
  auto* const wait = new QTimer(&window);
  wait->setSingleShot(true);
  QObject::connect(wait, &QTimer::timeout, &window, [&window] {
    if (!window.isVisible()) QApplication::quit();
  });
  wait->start(kPatience);
}

}  // namespace fexora::desktop
