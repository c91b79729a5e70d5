#include "programs/desktop/QtText.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QStringList>
#include <algorithm>

namespace fexora::desktop {

QString nameOf(const Currency& currency) {
  return toQt(localizedString(*Platform::process().strings, currency.code()));
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

QString amountText(double value, const Currency& of, const StoreManager& store) {
  const CurrencyFacts* const facts = currencyFacts(of.code());
  std::int64_t digits = store.fraction();
  if (facts != nullptr && facts->digits) digits = std::min<std::int64_t>(digits, *facts->digits);
  return toQt(NumberFormat(digits, store.seporate()).amount(value));
}

QString plainNumber(double value) {
  constexpr int kMostDigits = 15;
  return toQt(NumberFormat(kMostDigits, false).exact(value));
}

QString leftToRight(const QString& text) {
  // Signs that say so are seen as boxes in some title bars.
  if (QGuiApplication::isLeftToRight()) return text;
  return QChar(0x2066) + text + QChar(0x2069);
}

}  // namespace fexora::desktop
