#include "programs/desktop/Languages.h"

#include <QApplication>
#include <QTranslator>

#include "fexora/fexora.h"

#include "programs/desktop/QtText.h"

namespace fexora::desktop {
namespace {

QTranslator& installed() {
  static auto* const translator = new QTranslator(QApplication::instance());
  return *translator;
}

}  // namespace

QLocale languageLocale() {
  const std::string language = Locale::currentLanguage();
  const bool isNone = language == "C" || language == "POSIX" || language.empty();
  return QLocale(isNone ? QStringLiteral("en_GB") : toQt(language));
}

void applyLanguage() {
  const QLocale locale = languageLocale();
  QLocale::setDefault(locale);
  QTranslator& translator = installed();
  QCoreApplication::removeTranslator(&translator);
  const QString folder = QStringLiteral(":/languages");
  const bool found = translator.load(locale, QStringLiteral("fexora"), QStringLiteral("_"), folder);
  if (!found) (void)translator.load(QStringLiteral("fexora_en"), folder);
  QCoreApplication::installTranslator(&translator);
  QApplication::setLayoutDirection(found ? locale.textDirection() : Qt::LeftToRight);
}

}  // namespace fexora::desktop
