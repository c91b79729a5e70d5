#include "programs/desktop/QtText.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QLocale>
#include <QStringList>
#include <algorithm>
#include <cmath>

#include "fexora/platform/text/OneLine.h"

#include "programs/shared/ShownNames.h"

namespace fexora::desktop {
namespace {

constexpr int kMostDigits = 15;

QString superscript(QStringView number) {
  constexpr QStringView kDigits = u"⁰¹²³⁴⁵⁶⁷⁸⁹";
  QString text;
  for (const QChar sign : number) {
    if (sign == '-') text += QChar(u'⁻');
    if (sign.isDigit()) text += kDigits[sign.digitValue()];
  }
  return text;
}

using Writer = std::string (NumberFormat::*)(double) const;

// As `write` does it, unless it becomes a power of ten.
QString shown(double value, std::int64_t digits, bool grouping, Writer write) {
  constexpr double kLong = 1e21;
  constexpr std::int64_t kFewest = 2;  // digits of a power
  const double size = std::abs(value);
  const bool fits = value == 0 || !std::isfinite(value) || (size < kLong && size >= 1 / kLong);
  if (!fits) digits = std::clamp<std::int64_t>(digits, kFewest, kMostDigits);
  const NumberFormat format(digits, grouping);
  if (fits) return toQt((format.*write)(value));
  const QStringList parts = QString::number(value, 'e', static_cast<int>(digits)).split('e');
  // Marks keep the order of the two beside Arabic digits.
  const bool isPlain = QGuiApplication::isLeftToRight();
  return toQt((format.*write)(parts[0].toDouble())) +
         (isPlain ? QStringLiteral("×10") : QStringLiteral("\u200E×\u200E10")) +
         superscript(QString::number(parts[1].toInt()));
}

}  // namespace

QString lineOf(std::string_view text) {
  return toQt(oneLine(text)).simplified();
}

QString nameOf(const Currency& currency) {
  return toQt(program::nameOf(currency));
}

QString signOf(const Currency& currency) {
  const CurrencyFacts* const facts = currencyFacts(currency.code());
  return facts == nullptr || facts->signs.empty() ? QString() : toQt(*facts->signs.begin());
}

QString placesOf(const Currency& currency) {
  constexpr qsizetype kMost = 3;
  const CurrencyFacts* const facts = currencyFacts(currency.code());
  const QString comma = QCoreApplication::translate("FreshnessWords", ", ", "between parts");
  QStringList places;
  if (facts == nullptr) return {};
  const std::string language = Locale::currentLanguage();
  for (const std::string_view region : facts->regions) {
    if (places.size() == kMost) return places.join(comma) + " …";
    const auto names = Text::process().regionNames(region, language == "C" ? "en" : language);
    if (!names.empty()) places << toQt(names.front());
  }
  return places.join(comma);
}

QString remarkOf(const Currency& currency) {
  const CurrencyFacts* const facts = currencyFacts(currency.code());
  if (facts == nullptr || facts->kind != CurrencyKind::withdrawn) return {};
  if (facts->successor.empty()) return QCoreApplication::translate("Currency", "withdrawn");
  return QCoreApplication::translate("Currency", "replaced by %1").arg(toQt(facts->successor));
}

QString amountText(double value, const StoreManager& store) {
  return shown(value, store.fraction(), store.seporate(), &NumberFormat::amount);
}

QString exactText(double value, bool grouping) {
  return shown(value, kMostDigits - 1, grouping, &NumberFormat::exact);
}

QString plainNumber(double value) {
  return toQt(NumberFormat(kMostDigits, false).exact(value));
}

QString fixedText(double value, int digits) {
  NumberStyle style;
  style.minimumFractionDigits = style.maximumFractionDigits = digits;
  style.grouping = true;
  return toQt(Text::process().formatNumber(value, Locale::current(), style));
}

QString percentText(double percent) {
  const QString number = fixedText(std::abs(percent), 2);
  return leftToRight(QCoreApplication::translate("FreshnessWords", "%1 %", "a change in percent")
                         .arg((percent < 0 ? u'−' : u'+') + number));
}

QString kilobytesText(std::uint64_t bytes) {
  constexpr std::uint64_t kKilobyte = 1024;
  return QLocale().toString(static_cast<qulonglong>((bytes + kKilobyte - 1) / kKilobyte));
}

QString leftToRight(const QString& text) {
  // Signs that say so are seen as boxes in some title bars.
  if (QGuiApplication::isLeftToRight()) return text;
  return QChar(0x2066) + text + QChar(0x2069);
}

}  // namespace fexora::desktop
