#include "programs/desktop/ProblemText.h"

#include <QCoreApplication>
#include <QDate>
#include <QRegularExpression>

#include "programs/desktop/Languages.h"
#include "programs/desktop/QtText.h"

namespace fexora::desktop {
namespace {

// Codes in them are the service's, which may be of any length.
constexpr qsizetype kLongestReason = 200;

QString translated(const char* sentence) {
  return QCoreApplication::translate("ResponseError", sentence);
}

// As plausible() puts it, with codes, figures and days at %1, %2 and %3.
constexpr const char* kReasons[] = {
    QT_TRANSLATE_NOOP("ResponseError", "the rate of %1 is %2"),
    QT_TRANSLATE_NOOP("ResponseError", "there are none"),
    QT_TRANSLATE_NOOP("ResponseError", "the US dollar is missing"),
    QT_TRANSLATE_NOOP("ResponseError", "one US dollar is %1 US dollars"),
    QT_TRANSLATE_NOOP("ResponseError", "only %1 of the %2 currencies are there"),
    QT_TRANSLATE_NOOP("ResponseError", "%1 moved from %2 to %3"),
    QT_TRANSLATE_NOOP("ResponseError", "they are of the future, %1"),
    QT_TRANSLATE_NOOP("ResponseError", "they are of %1, older than those of %2"),
    QT_TRANSLATE_NOOP("ResponseError", "the check of the rates failed")};

constexpr const char* kSentences[] = {
    QT_TRANSLATE_NOOP("ResponseError", "This computer cannot ask for rates right now."),
    QT_TRANSLATE_NOOP("ResponseError", "The rates service was not found. Is this computer online?"),
    QT_TRANSLATE_NOOP("ResponseError", "The rates service could not be reached."),
    QT_TRANSLATE_NOOP("ResponseError", "The rates service took too long to answer."),
    QT_TRANSLATE_NOOP("ResponseError", "The answer was too large to be read."),
    QT_TRANSLATE_NOOP(
        "ResponseError",
        "The answer was not from a rates service. Does this network ask for a login?")};

// What stood at a %1: a figure, a day, or a code.
QString argumentText(const QString& text) {
  bool isNumber = false;
  const double number = text.toDouble(&isNumber);
  // A code may be "inf".
  if (isNumber && !text.at(0).isLetter()) return plainNumber(number);
  const QDate day = QDate::fromString(text, Qt::ISODate);
  if (!day.isValid()) return text;
  return languageLocale().toString(
      day, QCoreApplication::translate("FreshnessWords", "d MMMM yyyy", "a day"));
}

QString reasonInWords(const QString& reason) {
  if (reason.size() > kLongestReason || reason.contains('%')) return reason;
  for (const char* const known : kReasons) {
    QString pattern = QRegularExpression::escape(QLatin1String(known));
    pattern.replace(QRegularExpression("\\\\%[1-3]"), "(\\S+)");
    const auto match =
        QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(reason);
    if (!match.hasMatch()) continue;
    QString words = translated(known);
    for (int i = 1; i <= match.lastCapturedIndex(); ++i) {
      words = words.arg(argumentText(match.captured(i)));
    }
    return words;
  }
  return reason;
}

}  // namespace

QString inWords(const ResponseError& error) {
  using Kind = ResponseError::Kind;
  if (error.kind == Kind::httpStatus) {
    return translated(
               QT_TRANSLATE_NOOP("ResponseError", "The rates service has no rates right now (%1)."))
        .arg(error.status);
  }
  if (error.kind == Kind::implausible) {
    return translated(QT_TRANSLATE_NOOP("ResponseError",
                                        "The new rates look wrong and were not taken: %1."))
        .arg(reasonInWords(lineOf(error.message)));
  }
  const std::string text = error.forPeople();
  for (const char* const sentence : kSentences) {
    if (text == sentence) return translated(sentence);
  }
  return lineOf(text);
}

}  // namespace fexora::desktop
