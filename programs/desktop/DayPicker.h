// Chooses a past day from a calendar, by mouse or by keyboard.
#pragma once

#include <QDialog>
#include <optional>

#include "programs/desktop/Desk.h"

class QCalendarWidget;

namespace fexora::desktop {

class DayPicker final : public QDialog {
  Q_OBJECT

 public:
  // Begins at `shown`, else at yesterday.
  DayPicker(const Desk& desk, const std::optional<Day>& shown, QWidget* parent = nullptr);

  Day day() const;
  QCalendarWidget& calendar() { return *calendar_; }

 private:
  void styleCalendar();

  QCalendarWidget* calendar_;
};

}  // namespace fexora::desktop
