#include "programs/desktop/AmountField.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "programs/desktop/LinkButton.h"
#include "programs/desktop/QtText.h"
#include "programs/desktop/SourceButton.h"
#include "programs/desktop/Style.h"
#include "programs/desktop/TextLine.h"

namespace fexora::desktop {
namespace {

constexpr double kHeight = 60;
constexpr double kRadius = 10;

}  // namespace

AmountField::AmountField(QWidget* parent)
    : QWidget(parent),
      entry_(new QLineEdit(this)),
      source_(new SourceButton(this)),
      statusLine_(new TextLine(12, TextLine::Tone::dim)),
      otherReading_(new LinkButton) {
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(sized(3));
  auto* const row = new QHBoxLayout;
  row->setContentsMargins(0, sized(8), 0, sized(8));
  // Margins would not change sides in a language that runs from right to left.
  row->setSpacing(0);
  row->addSpacing(sized(14));
  row->addWidget(entry_, 1);
  row->addWidget(source_);
  row->addSpacing(sized(8));
  column->addLayout(row);
  auto* const line = new QHBoxLayout;
  line->setContentsMargins(0, 0, 0, 0);
  line->addSpacing(sized(4));
  line->addWidget(statusLine_, 1);
  line->addWidget(otherReading_);
  column->addLayout(line);
  buildEntry();
  buildLine();
}

void AmountField::buildEntry() {
  entry_->setFrame(false);
  entry_->setFont(fontOf(28, QFont::DemiBold));
  entry_->setFixedHeight(sized(kHeight - 16));
  entry_->setAccessibleName(tr("Amount"));
  entry_->setToolTip(tr("Amount, or a calculation (Ctrl+L)"));
  // The frame around it is drawn here.
  QPalette palette = entry_->palette();
  palette.setColor(QPalette::Base, Qt::transparent);
  entry_->setPalette(palette);
  entry_->installEventFilter(this);
  setFocusProxy(entry_);
  connect(entry_, &QLineEdit::textEdited, this, &AmountField::read);
  connect(source_, &QPushButton::clicked, this, &AmountField::sourceWanted);
}

void AmountField::buildLine() {
  statusLine_->setAccessibleDescription(tr("What was read"));
  statusLine_->setMinimumHeight(otherReading_->sizeHint().height());
  otherReading_->hide();
  connect(otherReading_, &QPushButton::clicked, this, &AmountField::takeOther);
}

void AmountField::setAmount(double amount) {
  entry_->setText(plainNumber(amount));
  entry_->setModified(false);
  reading_ = readTyped(entry_->text());
  isOther_ = false;
  showReading();
  // Also while another window is in front: who comes back types over it.
  if (window()->focusWidget() == entry_) selectText();
}

void AmountField::setSource(const Currency& currency) {
  sourceCode_ = codeOf(currency);
  sourceName_ = nameOf(currency);
  source_->setText(sourceCode_);
  source_->setAccessibleName(tr("Source currency: %1").arg(sourceName_));
  source_->setToolTip(tr("%1 – choose another (Ctrl+K)").arg(sourceName_));
  showReading();
}

std::optional<double> AmountField::amount() const {
  if (!reading_.hasAmount()) return std::nullopt;
  return isOther_ ? *reading_.other : reading_.value;
}

bool AmountField::isTyped() const {
  return entry_->isModified();
}

void AmountField::setAmountKept() {
  entry_->setModified(false);
  selectText();
}

// The cursor stands at the start: a number too long for the field is cut at its last digits.
void AmountField::selectText() {
  const auto length = static_cast<int>(entry_->text().size());
  entry_->setSelection(length, -length);
}

void AmountField::focusAndSelect() {
  entry_->setFocus(Qt::ShortcutFocusReason);
  selectText();
}

void AmountField::type(const QString& text) {
  entry_->setFocus(Qt::ShortcutFocusReason);
  selectText();
  entry_->insert(text);
  entry_->setModified(true);
  read();
}

void AmountField::takeOther() {
  if (!reading_.other) return;
  isOther_ = !isOther_;
  showReading();
  emit changed();
}

void AmountField::read() {
  reading_ = readTyped(entry_->text());
  isOther_ = false;
  if (!reading_.currency.empty()) emit currencyTyped(toQt(reading_.currency));
  showReading();
  emit changed();
}

void AmountField::showReading() {
  fitText();
  const bool refused = reading_.kind == AmountReading::Kind::refused;
  statusLine_->setTone(refused ? TextLine::Tone::warning : TextLine::Tone::dim);
  statusLine_->setText(readingText());
  otherReading_->setVisible(reading_.other.has_value());
  if (reading_.other) {
    const double other = isOther_ ? reading_.value : *reading_.other;
    otherReading_->setText(tr("%1 instead (Alt+R)").arg(exactText(other)));
  }
  update();
}

// A long amount is written smaller; one that is cut all the same is said below.
void AmountField::fitText() {
  constexpr double kLargest = 28;
  constexpr double kSmallest = 10;
  QFont font = fontOf(kLargest, QFont::DemiBold);
  const int room = std::max(1, entry_->width() - sized(12));
  const int wanted = QFontMetrics(font).horizontalAdvance(entry_->text());
  if (wanted > room) {
    font.setPixelSize(std::max(sized(kSmallest), font.pixelSize() * room / wanted));
  }
  isCut_ = QFontMetrics(font).horizontalAdvance(entry_->text()) > room;
  if (entry_->font() != font) entry_->setFont(font);
}

void AmountField::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  showReading();
}

QString AmountField::amountInWords() const {
  return leftToRight("= " + exactText(*amount()) + ' ' + sourceCode_) + " · " + sourceName_;
}

QString AmountField::readingText() const {
  switch (reading_.kind) {
    case AmountReading::Kind::refused:
      return reading_.problem;
    case AmountReading::Kind::calculation:
      return amountInWords();
    case AmountReading::Kind::number:
      if (isCut_) return amountInWords();
      if (reading_.other) return tr("Read as %1").arg(exactText(*amount()));
      if (!reading_.notice.isEmpty()) return reading_.notice;
      break;
    case AmountReading::Kind::empty:
      break;
  }
  return sourceName_;
}

bool AmountField::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) update();
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  const auto& key = static_cast<const QKeyEvent&>(*event);
  if (key.modifiers().testFlag(Qt::AltModifier)) return QWidget::eventFilter(watched, event);
  switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      emit accepted();
      return true;
    case Qt::Key_Escape:
      emit reverted();
      return true;
    case Qt::Key_Down:
      emit downWanted();
      return true;
    default:
      return QWidget::eventFilter(watched, event);
  }
}

QRect AmountField::frame() const {
  return {0, 0, width(), sized(kHeight)};
}

void AmountField::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Theme& theme = themeOf(palette());
  const bool refused = reading_.kind == AmountReading::Kind::refused;
  const QColor focused = refused ? theme.warning : theme.accent;
  painter.setPen(QPen(entry_->hasFocus() || refused ? focused : theme.hairline, 2));
  painter.setBrush(theme.field);
  const QRectF inner = QRectF(frame()).adjusted(1, 1, -1, -1);
  painter.drawRoundedRect(inner, sized(kRadius), sized(kRadius));
}

}  // namespace fexora::desktop
