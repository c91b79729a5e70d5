#include "programs/desktop/FreshnessText.h"

#include <QCoreApplication>
#include <QDate>
#include <QTime>

#include "programs/desktop/QtText.h"
#include "programs/shared/RatesDay.h"

namespace fexora::desktop {
namespace {

constexpr double kMinute = 60;
constexpr double kHour = 60 * kMinute;

struct FreshnessWords {
  Q_DECLARE_TR_FUNCTIONS(FreshnessWords)
};

bool isToday(const program::RatesDay& day, const Date& now) {
  return day.day == program::dayAt(now);
}

QString dayText(const program::RatesDay& of, const Date& now, const QLocale& locale) {
  if (isToday(of, now)) {
    if (!of.time) return FreshnessWords::tr("today");
    const QTime time = QTime::fromMSecsSinceStartOfDay(
        static_cast<int>(std::chrono::milliseconds(*of.time).count()));
    return FreshnessWords::tr("today, %1").arg(locale.toString(time, QLocale::ShortFormat));
  }
  return inWords(Day(of.day), now, locale);
}

QString ageText(const program::Age& age) {
  using Unit = program::Age::Unit;
  const int count = static_cast<int>(age.count);
  switch (age.unit) {
    case Unit::future:
      return FreshnessWords::tr("dated in the future");
    case Unit::moments:
      break;
    case Unit::minutes:
      return FreshnessWords::tr("%Ln minute(s) old", nullptr, count);
    case Unit::hours:
      return FreshnessWords::tr("%Ln hour(s) old", nullptr, count);
    case Unit::days:
      return FreshnessWords::tr("%Ln day(s) old", nullptr, count);
  }
  return FreshnessWords::tr("less than a minute old");
}

QString sourceText(Freshness::Origin origin, const std::string& source) {
  if (origin == Freshness::Origin::bundled) return FreshnessWords::tr("bundled");
  if (!source.empty()) return lineOf(source);
  return origin == Freshness::Origin::file ? FreshnessWords::tr("from a file") : QString();
}

}  // namespace

FreshnessText inWords(const Freshness& freshness, const Date& now, const QLocale& locale) {
  FreshnessText text;
  const auto& date = freshness.published ? freshness.published : freshness.stored;
  if (freshness.state == Freshness::State::none) {
    text.rates = text.dated = text.day = FreshnessWords::tr("No rates yet");
    return text;
  }
  text.isFresh = freshness.state == Freshness::State::fresh;
  text.day = FreshnessWords::tr("an unknown day");
  bool saysEnough = false;
  if (const auto day = date ? program::ratesDay(*date) : std::nullopt) {
    text.day = dayText(*day, now, locale);
    saysEnough = isToday(*day, now) && text.isFresh;
  }
  text.rates = (freshness.published ? FreshnessWords::tr("Rates of %1")
                                    : FreshnessWords::tr("Rates stored %1"))
                   .arg(text.day);
  text.dated = text.rates;
  const QString source = sourceText(freshness.origin, freshness.source);
  if (!source.isEmpty()) text.rates += FreshnessWords::tr(", ", "between parts") + source;
  if (date && !saysEnough) text.age = ageText(program::ageAt(now, *date));
  return text;
}

QString inWords(Day day, const Date& now, const QLocale& locale) {
  const bool isThisYear = std::chrono::year_month_day(day).year() == program::dayAt(now).year();
  return locale.toString(toQt(day), isThisYear ? FreshnessWords::tr("d MMMM", "a day of this year")
                                               : FreshnessWords::tr("d MMMM yyyy", "a day"));
}

QDate toQt(Day day) {
  static const QDate kEpoch(1970, 1, 1);
  return kEpoch.addDays(day.time_since_epoch().count());
}

FreshnessText pastInWords(const QString& day, const QString& source) {
  FreshnessText text;
  text.day = day;
  text.rates = text.dated = FreshnessWords::tr("Rates of %1").arg(day);
  if (!source.isEmpty()) text.rates += FreshnessWords::tr(", ", "between parts") + source;
  return text;
}

QString inWords(const program::RateOrigin& of, const Date& now, const QLocale& locale) {
  const auto published = of.published ? program::ratesDay(*of.published) : std::nullopt;
  const QString day =
      published ? dayText(*published, now, locale) : FreshnessWords::tr("an unknown day");
  const QString source = sourceText(of.origin, of.source);
  const QString words = FreshnessWords::tr("rate of %1").arg(day);
  return source.isEmpty() ? words : words + FreshnessWords::tr(", ", "between parts") + source;
}

int secondsToNextWords(const Freshness& freshness, const Date& now) {
  const auto& date = freshness.published ? freshness.published : freshness.stored;
  const double age = date ? now.secondsSince1970() - date->secondsSince1970() : kHour;
  return static_cast<int>(age >= 0 && age < kHour ? kMinute : kHour);
}

}  // namespace fexora::desktop
