// How fresh the rates are, in words for a person.
#pragma once

#include <QDate>
#include <QLocale>
#include <QString>

#include "fexora/fexora.h"

#include "programs/shared/OtherRates.h"

namespace fexora::desktop {

struct FreshnessText {
  QString rates;  // "Rates of 29 September, bundled"
  QString dated;  // the same without where they are from
  QString age;    // "57 days old"; empty for today's
  QString day;    // "today", "today, 16:00" or "29 September"
  bool isFresh = false;

  QString whole() const { return age.isEmpty() ? rates : rates + ", " + age; }
};

// Days as in programs/shared/RatesDay.h.
FreshnessText inWords(const Freshness& freshness, const Date& now, const QLocale& locale);

// Of rates of a past day, "29 September", and of a source, or nothing.
FreshnessText pastInWords(const QString& day, const QString& source);

// "rate of 29 September, bundled": of one that is not of the newest rates.
QString inWords(const program::RateOrigin& of, const Date& now, const QLocale& locale);

// "29 September", with the year when it is not this one.
QString inWords(Day day, const Date& now, const QLocale& locale);
// The same day for Qt.
QDate toQt(Day day);

// Seconds after which the words may have changed: up to an hour.
int secondsToNextWords(const Freshness& freshness, const Date& now);

}  // namespace fexora::desktop
