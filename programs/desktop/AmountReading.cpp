#include "programs/desktop/AmountReading.h"

#include <QCoreApplication>

#include "fexora/fexora.h"

#include "programs/desktop/QtText.h"
#include "programs/shared/Calculation.h"

namespace fexora::desktop {
namespace {

using program::SumResult;

QString problemOf(SumResult::Problem problem) {
  switch (problem) {
    case SumResult::Problem::incomplete:
      return QCoreApplication::translate("AmountReading", "A number is missing");
    case SumResult::Problem::unbalanced:
      return QCoreApplication::translate("AmountReading", "A parenthesis has no partner");
    case SumResult::Problem::divisionByZero:
      return QCoreApplication::translate("AmountReading", "Divided by zero");
    case SumResult::Problem::notFinite:
      return QCoreApplication::translate("AmountReading", "Too large a number");
    default:
      return QCoreApplication::translate("AmountReading", "No amount; write it like %1")
          .arg(plainNumber(12.5));
  }
}

AmountReading calculated(const std::string& text) {
  program::Calculation calculation = program::calculate(text);
  if (calculation.sum.problem == SumResult::Problem::incomplete) {
    const auto last = text.find_last_not_of("+-*/( ");
    if (last != std::string::npos) calculation = program::calculate(text.substr(0, last + 1));
  }
  const SumResult& sum = calculation.sum;
  AmountReading reading;
  const bool isRight = sum.problem == SumResult::Problem::none;
  reading.kind = isRight ? AmountReading::Kind::calculation : AmountReading::Kind::refused;
  if (isRight) reading.value = sum.value;
  if (!isRight) reading.problem = problemOf(sum.problem);
  reading.other = calculation.other;
  return reading;
}

AmountReading numberOf(const TypedAmount& read) {
  AmountReading reading;
  reading.kind = AmountReading::Kind::number;
  reading.value = read.value;
  reading.other = read.other;
  reading.currency = read.currency;
  reading.currencyIsGuess = read.currencyBy == TypedAmount::CurrencyBy::region ||
                            read.currencyBy == TypedAmount::CurrencyBy::trade;
  return reading;
}

}  // namespace

AmountReading readTyped(const QString& text) {
  const std::string typed = text.trimmed().toStdString();
  AmountReading reading;
  if (typed.empty()) return reading;
  const TypedAmount read = readAmount(typed);
  if (read.kind != TypedAmount::Kind::refused) return numberOf(read);
  const std::string sum = program::withPlainSigns(typed);
  if (program::mayBeSum(sum)) return calculated(sum);
  reading.kind = AmountReading::Kind::refused;
  reading.problem = problemOf(SumResult::Problem::noNumber);
  return reading;
}

}  // namespace fexora::desktop
