#include "programs/desktop/AmountReading.h"

#include <QCoreApplication>

#include "programs/desktop/QtText.h"

namespace fexora::desktop {
namespace {

using Problem = SentenceProblem::Kind;

QString say(const char* text) {
  return QCoreApplication::translate("AmountReading", text);
}

QString unknownCurrency(const std::string& typed, const SentenceProblem& problem) {
  const QString word = toQt(typed.substr(problem.place, problem.length));
  if (problem.near.empty())
    return say(QT_TRANSLATE_NOOP("AmountReading", "Not a currency: %1")).arg(word);
  return say(QT_TRANSLATE_NOOP("AmountReading", "Not a currency: %1; perhaps %2"))
      .arg(word, codeOf(*problem.near.front()));
}

QString problemOf(const std::string& typed, const SentenceProblem& problem) {
  switch (problem.kind) {
    case Problem::incomplete:
      return say(QT_TRANSLATE_NOOP("AmountReading", "A number is missing"));
    case Problem::unbalanced:
      return say(QT_TRANSLATE_NOOP("AmountReading", "A parenthesis has no partner"));
    case Problem::divisionByZero:
      return say(QT_TRANSLATE_NOOP("AmountReading", "Divided by zero"));
    case Problem::tooLarge:
      return say(QT_TRANSLATE_NOOP("AmountReading", "Too large a number"));
    case Problem::secondCurrency:
      return say(QT_TRANSLATE_NOOP("AmountReading", "Two currencies in one calculation"));
    case Problem::unknownDay:
      return say(QT_TRANSLATE_NOOP("AmountReading", "No day; write it like %1"))
          .arg(QStringLiteral("2024-03-01"));
    case Problem::unknownCurrency:
      if (problem.place > 0) return unknownCurrency(typed, problem);
      break;
    default:
      break;
  }
  return say(QT_TRANSLATE_NOOP("AmountReading", "No amount; write it like %1"))
      .arg(plainNumber(12.5));
}

// The second reading of a number has a button of its own.
QString noticeOf(const Sentence& sentence) {
  using Notice = SentenceNotice::Kind;
  constexpr double kHundred = 100;
  for (const SentenceNotice& notice : sentence.notices) {
    const QString name = notice.currency != nullptr ? nameOf(*notice.currency) : QString();
    switch (notice.kind) {
      case Notice::region:
      case Notice::trade:
      case Notice::name:
        return say(QT_TRANSLATE_NOOP("AmountReading", "“%1” was read as %2"))
            .arg(toQt(notice.text), name);
      case Notice::accounting:
        return say(QT_TRANSLATE_NOOP("AmountReading", "“%1” was read as %2"))
            .arg(toQt(notice.text), plainNumber(notice.value));
      case Notice::hundredths:
        if (notice.value != kHundred) continue;
        return say(QT_TRANSLATE_NOOP("AmountReading", "%1: hundredths of %2"))
            .arg(toQt(notice.text), name);
      case Notice::troyOunces:
        return say(QT_TRANSLATE_NOOP("AmountReading", "%1, in troy ounces")).arg(name);
      default:
        break;
    }
  }
  return {};
}

AmountReading readingOf(const Sentence& sentence) {
  using Kind = AmountReading::Kind;
  AmountReading reading;
  reading.kind = sentence.isCalculation ? Kind::calculation : Kind::number;
  reading.value = sentence.amount.value;
  reading.other = sentence.amount.other;
  reading.currency = sentence.amount.currency;
  reading.destinations = sentence.destinations;
  reading.notice = noticeOf(sentence);
  return reading;
}

// What has begun somewhere on earth is no day to come.
bool isToCome(Day day) {
  const double now = Platform::process().loop->wallSeconds();
  return day > dayOfMoment(now) + std::chrono::days(1);
}

}  // namespace

AmountReading readTyped(const QString& text) {
  const std::string typed = text.trimmed().toStdString();
  AmountReading reading;
  if (typed.empty()) return reading;
  Sentence sentence = readSentence(typed);
  if (sentence.problem && sentence.problem->kind == Problem::incomplete) {
    const auto last = typed.find_last_not_of("+-*/^( ");
    if (last != std::string::npos) sentence = readSentence(typed.substr(0, last + 1));
    sentence.isCalculation = true;
  }
  if (sentence.day && isToCome(*sentence.day)) {
    reading.kind = AmountReading::Kind::refused;
    reading.problem = say(QT_TRANSLATE_NOOP("AmountReading", "That day is yet to come"));
    return reading;
  }
  if (!sentence.problem) {
    reading = readingOf(sentence);
    reading.day = sentence.day;
    reading.amountText = toQt(typed.substr(0, sentence.amountEnd));
    return reading;
  }
  reading.kind = AmountReading::Kind::refused;
  reading.problem = problemOf(typed, *sentence.problem);
  return reading;
}

}  // namespace fexora::desktop
