#include "programs/desktop/DayPicker.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QTextCharFormat>
#include <QToolButton>
#include <QVBoxLayout>

#include "programs/desktop/FreshnessText.h"
#include "programs/desktop/Languages.h"
#include "programs/desktop/Style.h"

namespace fexora::desktop {

DayPicker::DayPicker(const Desk& desk, const std::optional<Day>& shown, QWidget* parent)
    : QDialog(parent), calendar_(new QCalendarWidget) {
  setWindowTitle(tr("Rates of a day"));
  const Day today = dayOfMoment(desk.now().secondsSince1970());
  calendar_->setLocale(languageLocale());
  calendar_->setFirstDayOfWeek(languageLocale().firstDayOfWeek());
  calendar_->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
  calendar_->setMaximumDate(toQt(today));
  calendar_->setMinimumDate(QDate(1900, 1, 1));
  calendar_->setSelectedDate(toQt(shown.value_or(today - std::chrono::days(1))));
  styleCalendar();
  // Of its own it writes Saturdays and Sundays red.
  QTextCharFormat plain;
  plain.setForeground(palette().text());
  for (const auto day : {Qt::Saturday, Qt::Sunday}) calendar_->setWeekdayTextFormat(day, plain);
  auto* const buttons = new QDialogButtonBox;
  QPushButton* const show = buttons->addButton(tr("Show"), QDialogButtonBox::AcceptRole);
  buttons->addButton(tr("Cancel"), QDialogButtonBox::RejectRole);
  show->setDefault(true);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(sized(14), sized(14), sized(14), sized(14));
  column->addWidget(calendar_);
  column->addWidget(buttons);
  connect(calendar_, &QCalendarWidget::activated, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  calendar_->setFocus();
}

// Its own signs are green pictures on the accent.
void DayPicker::styleCalendar() {
  calendar_->setStyleSheet(
      QStringLiteral("QWidget#qt_calendar_navigationbar { background: palette(window); }"
                     "QToolButton { color: palette(text); background: transparent; border: none;"
                     " padding: %1px; font-weight: 600; }"
                     "QToolButton:hover, QToolButton:focus { background: palette(button);"
                     " border-radius: %1px; }"
                     "QToolButton::menu-indicator { image: none; }")
          .arg(sized(5)));
  const bool mirrored = QApplication::isRightToLeft();
  for (const bool isNext : {false, true}) {
    auto* const button = calendar_->findChild<QToolButton*>(
        isNext ? QStringLiteral("qt_calendar_nextmonth") : QStringLiteral("qt_calendar_prevmonth"));
    if (button == nullptr) continue;
    button->setIcon({});
    button->setArrowType(isNext != mirrored ? Qt::RightArrow : Qt::LeftArrow);
  }
}

Day DayPicker::day() const {
  return Day(std::chrono::days(QDate(1970, 1, 1).daysTo(calendar_->selectedDate())));
}

}  // namespace fexora::desktop
