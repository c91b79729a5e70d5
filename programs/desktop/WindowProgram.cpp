#include "programs/desktop/WindowProgram.h"

#include <QCommandLineParser>
#include <QIcon>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <chrono>
#include <iterator>
#include <string_view>

#include "programs/desktop/EndSignals.h"
#include "programs/desktop/FirstPaint.h"
#include "programs/desktop/Languages.h"
#include "programs/desktop/PlainLabels.h"

namespace fexora::desktop {
namespace {

// With the mark after which everything is an operand.
QStringList withOperandsMarked(QStringList arguments) {
  const auto isOption = [](const QString& word) {
    return word.startsWith("--") || word == "-h" || word == "-v";
  };
  const auto operand = std::find_if_not(arguments.begin() + 1, arguments.end(), isOption);
  if (operand != arguments.end()) arguments.insert(operand, QStringLiteral("--"));
  return arguments;
}

}  // namespace

void answerWithoutDisplay(int count, char** arguments) {
  constexpr std::string_view kTold[] = {"-h", "--help", "--help-all", "-v", "--version"};
  const bool isTold =
      count > 1 && std::find(std::begin(kTold), std::end(kTold), arguments[1]) != std::end(kTold);
  if (isTold) qputenv("QT_QPA_PLATFORM", "offscreen");
}

void prepareApplication(QApplication& application, const QString& id, const QString& name) {
  QApplication::setOrganizationName(QStringLiteral("fexora"));
  QApplication::setApplicationName(name);
  QApplication::setApplicationVersion(QStringLiteral(FEXORA_VERSION));
  QGuiApplication::setDesktopFileName(id);
  keepLabelsPlain(application);
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
  parser.process(withOperandsMarked(application.arguments()));
  return {parser.positionalArguments(), parser.isSet(service)};
}

int run(const CommandLine& line, QWidget& window) {
  constexpr auto kPatience = std::chrono::seconds(10);
  endOnSignals();
  // What draws it is a plugin of Qt's, which is not waited for.
  onceItIsPainted(window, [] {
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/org.fexora.Fexora.svg")));
  });
  if (!line.isService) {
    window.show();
    return QApplication::exec();
  }
  QTimer wait;
  wait.setSingleShot(true);
  QObject::connect(&wait, &QTimer::timeout, &window, [&window] {
    if (!window.isVisible()) QApplication::quit();
  });
  wait.start(kPatience);
  return QApplication::exec();
}

}  // namespace fexora::desktop
