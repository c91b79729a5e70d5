// QLocale, kept: how a Qt program reads a typed number.
#include <QLocale>

#include "bench/support/Peers.h"

namespace fexora::bench {
namespace {

const Peers<AmountJob> numbers([](Race& race, const AmountJob& job) {
  std::vector<QString> texts;  // as a line edit has them
  for (const std::string& text : job.texts) texts.push_back(QString::fromStdString(text));
  const auto batch = static_cast<double>(texts.size());
  race.add(
      "QLocale::toDouble, kept",
      [texts, locale = QLocale(QLocale::English, QLocale::UnitedStates)] {
        double sum = 0;
        for (const QString& text : texts) sum += locale.toDouble(text);
        return sum;
      },
      batch);
});

}  // namespace
}  // namespace fexora::bench
