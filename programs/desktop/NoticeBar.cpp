#include "programs/desktop/NoticeBar.h"

#include <QHBoxLayout>
#include <QPainter>
#include <utility>

#include "programs/desktop/LinkButton.h"
#include "programs/desktop/SignButton.h"
#include "programs/desktop/Style.h"
#include "programs/desktop/TextLine.h"

namespace fexora::desktop {

NoticeBar::NoticeBar(QWidget* parent)
    : QWidget(parent),
      text_(new TextLine(12, TextLine::Tone::text)),
      action_(new LinkButton),
      close_(new SignButton(SignButton::Sign::close, tr("Put away"))) {
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(sized(18), sized(4), sized(8), sized(4));
  row->addWidget(text_, 1);
  row->addWidget(action_);
  row->addWidget(close_);
  text_->setAccessibleDescription(tr("Message"));
  connect(close_, &SignButton::clicked, this, &QWidget::hide);
  connect(action_, &QPushButton::clicked, this, [this] {
    hide();
    if (run_) run_();
  });
  hide();
}

void NoticeBar::tell(const QString& text, const QString& action, std::function<void()> run) {
  text_->setText(text);
  action_->setText(action);
  action_->setVisible(!action.isEmpty());
  run_ = std::move(run);
  setVisible(!text.isEmpty());
}

QString NoticeBar::text() const {
  return isHidden() ? QString() : text_->text();
}

void NoticeBar::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Theme& theme = themeOf(palette());
  painter.fillRect(rect(), theme.button);
  painter.fillRect(QRect(0, height() - 1, width(), 1), theme.hairline);
}

}  // namespace fexora::desktop
