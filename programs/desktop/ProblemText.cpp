#include "programs/desktop/ProblemText.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QTimeZone>
#include <cmath>

#include "programs/desktop/Languages.h"
#include "programs/desktop/QtText.h"

namespace fexora::desktop {
namespace {

// Codes are the service's, which may be of any length.
constexpr std::size_t kLongestCode = 32;

QString translated(const char* sentence) {
  return QCoreApplication::translate("ResponseError", sentence);
}

// With a code at %1 and figures at %2 and %3, as far as the sentence has them.
const char* sentenceOf(RatesReason::Kind kind) {
  using Kind = RatesReason::Kind;
  switch (kind) {
    case Kind::noRates:
      return QT_TRANSLATE_NOOP("ResponseError", "there are none");
    case Kind::wrongRate:
      return QT_TRANSLATE_NOOP("ResponseError", "the rate of %1 is %3");
    case Kind::noDollar:
      return QT_TRANSLATE_NOOP("ResponseError", "the US dollar is missing");
    case Kind::wrongDollar:
      return QT_TRANSLATE_NOOP("ResponseError", "one US dollar is %3 US dollars");
    case Kind::otherBase:
      return QT_TRANSLATE_NOOP("ResponseError",
                               "they are quoted against %1, not against the US dollar");
    case Kind::twice:
      return QT_TRANSLATE_NOOP("ResponseError", "%1 is there twice, as %2 and as %3");
    case Kind::moved:
      return QT_TRANSLATE_NOOP("ResponseError", "%1 moved from %2 to %3");
    case Kind::manyMoved:
      return QT_TRANSLATE_NOOP("ResponseError", "%3 of the %2 currencies leaped");
    case Kind::allMoved:
      return QT_TRANSLATE_NOOP("ResponseError", "nearly all moved at once, by a factor of %3");
    case Kind::vanished:
      return QT_TRANSLATE_NOOP("ResponseError", "%1 is not there any more");
    case Kind::contradiction:
      return QT_TRANSLATE_NOOP(
          "ResponseError", "two sources contradict each other: %1 is %2 in one, %3 in the other");
    case Kind::future:
      return QT_TRANSLATE_NOOP("ResponseError", "they are of the future, %3");
    case Kind::older:
      return QT_TRANSLATE_NOOP("ResponseError", "they are of %3, older than those of %2");
    case Kind::unchecked:
    case Kind::other:
      return QT_TRANSLATE_NOOP("ResponseError", "the check of the rates failed");
  }
  return "";
}

QString dayText(double secondsSince1970) {
  return languageLocale().toString(
      QDateTime::fromSecsSinceEpoch(static_cast<qint64>(secondsSince1970), QTimeZone::utc()).date(),
      QCoreApplication::translate("FreshnessWords", "d MMMM yyyy", "a day"));
}

// Two moments, told by their days, and by their times where the day is the same.
QString momentText(double secondsSince1970, double other) {
  constexpr double kDay = 86400;
  if (std::floor(secondsSince1970 / kDay) != std::floor(other / kDay)) {
    return dayText(secondsSince1970);
  }
  return languageLocale().toString(
      QDateTime::fromSecsSinceEpoch(static_cast<qint64>(secondsSince1970), QTimeZone::utc()),
      QLocale::LongFormat);
}

const char* sentenceOf(ResponseError::Kind kind) {
  using Kind = ResponseError::Kind;
  switch (kind) {
    case Kind::noAddress:
      return QT_TRANSLATE_NOOP("ResponseError",
                               "The rates service was not found. Is this computer online?");
    case Kind::noConnection:
      return QT_TRANSLATE_NOOP("ResponseError", "The rates service could not be reached.");
    case Kind::timeOut:
      return QT_TRANSLATE_NOOP("ResponseError", "The rates service took too long to answer.");
    case Kind::httpStatus:
      return QT_TRANSLATE_NOOP("ResponseError", "The rates service has no rates right now (%1).");
    case Kind::tooLarge:
      return QT_TRANSLATE_NOOP("ResponseError", "The answer was too large to be read.");
    case Kind::notJson:
    case Kind::notAnObject:
      return QT_TRANSLATE_NOOP(
          "ResponseError",
          "The answer was not from a rates service. Does this network ask for a login?");
    case Kind::notTrusted:
      return QT_TRANSLATE_NOOP(
          "ResponseError",
          "The rates service could not prove who it is. Is this computer's clock right?");
    case Kind::noTransport:
    case Kind::implausible:
    case Kind::cancelled:
      break;
  }
  return QT_TRANSLATE_NOOP("ResponseError", "This computer cannot ask for rates right now.");
}

}  // namespace

QString inWords(const ResponseError& error) {
  const QString words = translated(sentenceOf(error.kind));
  return error.kind == ResponseError::Kind::httpStatus ? words.arg(error.status) : words;
}

QString inWords(const RatesReason& reason) {
  using Kind = RatesReason::Kind;
  if (reason.kind == Kind::other) return lineOf(reason.text);
  const bool isDated = reason.kind == Kind::future || reason.kind == Kind::older;
  const auto argument = [&](double value, double other) {
    return isDated ? momentText(value, other) : plainNumber(value);
  };
  QString words = translated(sentenceOf(reason.kind));
  // The figures first: a code may hold a percent sign.
  words.replace(QStringLiteral("%2"), argument(reason.before, reason.now));
  words.replace(QStringLiteral("%3"), argument(reason.now, reason.before));
  return words.replace(QStringLiteral("%1"), lineOf(reason.code.substr(0, kLongestCode)));
}

QString inWords(const program::RatesProblem& problem, const AnswerVerdict& verdict) {
  using Cause = program::RatesProblem::Cause;
  if (problem.cause == Cause::nowhere) {
    return translated(
        QT_TRANSLATE_NOOP("ResponseError", "Nobody is asked for rates: see the settings."));
  }
  if (problem.cause != Cause::refused) return inWords(problem.error);
  return translated(
             QT_TRANSLATE_NOOP("ResponseError", "The new rates look wrong and were not taken: %1."))
      .arg(verdict.against ? inWords(*verdict.against) : lineOf(problem.error.message));
}

QString remarksOn(const AnswerVerdict& verdict) {
  if (!verdict.leftOut.empty()) {
    return translated(QT_TRANSLATE_NOOP("ResponseError", "Left out of the new rates: %1."))
        .arg(inWords(verdict.leftOut.front()));
  }
  if (verdict.notices.empty()) return {};
  return translated(QT_TRANSLATE_NOOP("ResponseError", "A leap in the new rates: %1."))
      .arg(inWords(verdict.notices.front()));
}

}  // namespace fexora::desktop
