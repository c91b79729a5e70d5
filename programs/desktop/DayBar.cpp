#include "programs/desktop/DayBar.h"

#include <QHBoxLayout>
#include <QPainter>
#include <algorithm>

#include "programs/desktop/LinkButton.h"
#include "programs/desktop/Style.h"
#include "programs/desktop/TextLine.h"

namespace fexora::desktop {

DayBar::DayBar(QWidget* parent)
    : QWidget(parent),
      text_(new TextLine(12, TextLine::Tone::warning, QFont::DemiBold)),
      today_(new LinkButton(tr("Today (Esc)"))) {
  auto* const row = new QHBoxLayout(this);
  // Margins would not change sides in a language that runs from right to left.
  row->setContentsMargins(sized(14), sized(4), sized(14), sized(4));
  row->addSpacing(sized(4));
  row->addWidget(text_, 1);
  row->addWidget(today_);
  text_->setAccessibleDescription(tr("Day of the rates"));
  today_->setToolTip(tr("Back to the newest rates"));
  connect(today_, &QPushButton::clicked, this, &DayBar::todayWanted);
  hide();
}

void DayBar::tell(const QString& day, const QString& ratesDay, const QString& source) {
  const QString dated = ratesDay.isEmpty() || ratesDay == day
                            ? tr("At the rates of %1").arg(day)
                            : tr("For %1: rates of %2").arg(day, ratesDay);
  forms_ = {dated, day};
  if (!source.isEmpty())
    forms_.prepend(tr("%1, %2", "rates of a day, a source").arg(dated, source));
  text_->setWhole(forms_.front());
  fitText();
  setVisible(true);
}

QString DayBar::text() const {
  return isHidden() ? QString() : forms_.front();
}

// The day itself is never cut.
void DayBar::fitText() {
  if (forms_.isEmpty()) return;
  const int room = width() - today_->sizeHint().width() - sized(18 + 14 + 10);
  const auto fits = std::find_if(forms_.begin(), forms_.end(), [&](const QString& form) {
    return text_->fontMetrics().horizontalAdvance(form) <= room;
  });
  text_->setText(fits != forms_.end() ? *fits : forms_.back());
}

void DayBar::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  fitText();
}

void DayBar::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Theme& theme = themeOf(palette());
  painter.fillRect(rect(), theme.button);
  painter.fillRect(QRect(0, height() - 1, width(), 1), theme.hairline);
}

}  // namespace fexora::desktop
