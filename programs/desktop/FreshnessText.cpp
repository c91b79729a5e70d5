#include "programs/desktop/FreshnessText.h"

#include <QCoreApplication>
#include <QDateTime>
#include <algorithm>

#include "programs/desktop/QtText.h"

namespace fexora::desktop {
namespace {

constexpr double kMinute = 60;
constexpr double kHour = 60 * kMinute;
constexpr double kDay = 24 * kHour;

struct FreshnessWords {
  Q_DECLARE_TR_FUNCTIONS(FreshnessWords)
};

QDateTime localTime(const Date& date) {
  return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(date.secondsSince1970() * 1000));
}

QString dayText(const Date& date, const Date& now, const QLocale& locale) {
  const QDateTime moment = localTime(date);
  const QDateTime today = localTime(now);
  if (moment.date() == today.date()) {
    return FreshnessWords::tr("today, %1")
        .arg(locale.toString(moment.time(), QLocale::ShortFormat));
  }
  const bool isThisYear = moment.date().year() == today.date().year();
  return locale.toString(moment.date(), isThisYear
                                            ? FreshnessWords::tr("d MMMM", "a day of this year")
                                            : FreshnessWords::tr("d MMMM yyyy", "a day"));
}

QString ageText(double seconds) {
  if (seconds < 0) return FreshnessWords::tr("dated in the future");
  if (seconds < kHour) {
    return FreshnessWords::tr("%Ln minute(s) old", nullptr, static_cast<int>(seconds / kMinute));
  }
  if (seconds < 2 * kDay) {
    return FreshnessWords::tr("%Ln hour(s) old", nullptr, static_cast<int>(seconds / kHour));
  }
  return FreshnessWords::tr("%Ln day(s) old", nullptr, static_cast<int>(seconds / kDay));
}

QString sourceText(const Freshness& freshness) {
  if (freshness.origin == Freshness::Origin::bundled) return FreshnessWords::tr("bundled");
  if (!freshness.source.empty()) return toQt(freshness.source).simplified();
  return freshness.origin == Freshness::Origin::file ? FreshnessWords::tr("from a file")
                                                     : QString();
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
  text.day = date ? dayText(*date, now, locale) : FreshnessWords::tr("an unknown day");
  text.rates = (freshness.published ? FreshnessWords::tr("Rates of %1")
                                    : FreshnessWords::tr("Rates stored %1"))
                   .arg(text.day);
  text.dated = text.rates;
  const QString source = sourceText(freshness);
  if (!source.isEmpty()) text.rates += FreshnessWords::tr(", ", "between parts") + source;
  const bool isToday = date && localTime(*date).date() == localTime(now).date();
  if (date && !(isToday && text.isFresh)) {
    text.age = ageText(now.secondsSince1970() - date->secondsSince1970());
  }
  return text;
}

int secondsToNextWords(const Freshness& freshness, const Date& now) {
  const auto& date = freshness.published ? freshness.published : freshness.stored;
  const double age = date ? now.secondsSince1970() - date->secondsSince1970() : kDay;
  return static_cast<int>(age >= 0 && age < kHour ? kMinute : kHour);
}

}  // namespace fexora::desktop
