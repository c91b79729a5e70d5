#include "programs/desktop/WindowProgram.h"

#include <QCommandLineParser>
#include <QIcon>

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

QStringList wordsOf(QApplication& application, const QString& purpose, const QString& operands) {
  QCommandLineParser parser;
  parser.setApplicationDescription(purpose);
  parser.addHelpOption();
  parser.addVersionOption();
  if (!operands.isEmpty()) parser.addPositionalArgument(QStringLiteral("words"), {}, operands);
  // "-5" is an amount.
  parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
  parser.process(application);
  return parser.positionalArguments();
}

}  // namespace fexora::desktop
