#include "programs/today/TodayWindow.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QListView>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QRegion>
#include <QScreen>
#include <QSettings>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>

#include "programs/desktop/Appearance.h"
#include "programs/desktop/Companion.h"
#include "programs/desktop/FreshnessDot.h"
#include "programs/desktop/FreshnessText.h"
#include "programs/desktop/HistoryThread.h"
#include "programs/desktop/Languages.h"
#include "programs/desktop/LinkButton.h"
#include "programs/desktop/PlainLabels.h"
#include "programs/desktop/QtText.h"
#include "programs/desktop/Style.h"
#include "programs/desktop/TextLine.h"
#include "programs/desktop/TodayDelegate.h"
#include "programs/desktop/TodayModel.h"
#include "programs/desktop/Trends.h"

namespace fexora::desktop {
namespace {

constexpr double kWidth = 264;
constexpr double kRadius = 14;
constexpr double kHead = 48;
constexpr double kFoot = 34;
constexpr double kRow = 34;
constexpr double kMargin = 18;

QString positionKey() {
  return QStringLiteral("today/place");
}

bool isOnAScreen(const QPoint& position) {
  const auto screens = QGuiApplication::screens();
  return std::any_of(screens.begin(), screens.end(), [&](const QScreen* screen) {
    return screen->availableGeometry().contains(position);
  });
}

}  // namespace

TodayWindow::TodayWindow(const Desk& desk, Appearance& appearance)
    : QMainWindow(nullptr, Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::Tool),
      desk_(desk),
      appearance_(appearance),
      history_(new HistoryThread(desk, this)),
      lines_(new TodayModel(desk, this)),
      heading_(new TextLine(17, TextLine::Tone::text, QFont::DemiBold)),
      span_(new TextLine(11)),
      mode_(new LinkButton({}, nullptr, 11)),
      list_(new QListView),
      dot_(new FreshnessDot),
      age_(new TextLine(11)) {
  setWindowTitle(tr("Fexora Today"));
  setAttribute(Qt::WA_TranslucentBackground);
  setAttribute(Qt::WA_QuitOnClose);
  lines_->setTrends(*new Trends(desk, *history_, this));
  build();
  reload();
  const QPoint position = QSettings().value(positionKey()).toPoint();
  if (!position.isNull() && isOnAScreen(position)) move(position);
  following_ = desk_.platform.notifications->addObserver(fileWatcherUpdate, [this] { reload(); });
}

void TodayWindow::build() {
  auto* const middle = new QWidget;
  auto* const column = new QVBoxLayout(middle);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(buildHead());
  list_->setModel(lines_);
  list_->setItemDelegate(new TodayDelegate(list_));
  list_->setUniformItemSizes(true);
  styleList(*list_);
  list_->setSelectionMode(QAbstractItemView::NoSelection);
  list_->setAccessibleName(tr("Amounts"));
  list_->viewport()->installEventFilter(this);
  list_->installEventFilter(this);
  column->addWidget(list_, 1);
  column->addWidget(buildFoot());
  setCentralWidget(middle);
  list_->setFocus();
}

QWidget* TodayWindow::buildHead() {
  auto* const head = new QWidget;
  head->setFixedHeight(sized(kHead));
  auto* const row = new QHBoxLayout(head);
  row->setContentsMargins(sized(kMargin), 0, sized(kMargin), 0);
  row->addWidget(heading_, 1);
  row->addWidget(span_);
  row->addWidget(mode_);
  span_->setKeepsWhole(true);
  heading_->setAccessibleDescription(tr("Converted amount"));
  connect(mode_, &QPushButton::clicked, this, &TodayWindow::turn);
  head->installEventFilter(this);
  return head;
}

QWidget* TodayWindow::buildFoot() {
  auto* const foot = new QWidget;
  foot->setFixedHeight(sized(kFoot));
  auto* const row = new QHBoxLayout(foot);
  row->setContentsMargins(sized(kMargin), 0, sized(kMargin), 0);
  row->setSpacing(sized(8));
  row->addWidget(dot_);
  row->addWidget(age_, 1);
  age_->setAccessibleDescription(tr("Age of the rates"));
  foot->installEventFilter(this);
  return foot;
}

void TodayWindow::reload() {
  lines_->reload();
  appearance_.apply();
  showWords();
  fit();
}

void TodayWindow::showWords() {
  heading_->setText(lines_->heading());
  span_->setVisible(desk_.store.todayTrend());
  span_->setText(tr("%1 days").arg(languageLocale().toString(Trends::kDays)));
  mode_->setVisible(lines_->showsRates());
  mode_->setText(tr("rates ⇄"));
  mode_->setToolTip(tr("Turn the rates around"));
  const Freshness freshness = desk_.rates.freshness();
  const FreshnessText words = inWords(freshness, desk_.now(), languageLocale());
  dot_->setFresh(words.isFresh);
  const bool isUnread = !desk_.store.loadProblem().empty();
  age_->setText(isUnread                               ? tr("The store could not be read.")
                : words.isFresh || words.age.isEmpty() ? words.day
                                                       : words.age);
  age_->setTone(words.isFresh && !isUnread ? TextLine::Tone::dim : TextLine::Tone::warning);
  setToolTip(wrapped(words.whole()));
  if (wordsTimer_ != 0) killTimer(wordsTimer_);
  wordsTimer_ = startTimer(secondsToNextWords(freshness, desk_.now()) * 1000, Qt::VeryCoarseTimer);
  update();
}

// As high as its lines, but no higher than the screen.
void TodayWindow::fit() {
  const int most = screen()->availableGeometry().height() - sized(80);
  const int wanted = sized(kHead) + sized(kFoot) + sized(kRow) * std::max(1, lines_->rowCount());
  setFixedSize(sized(kWidth), std::min(wanted, most));
}

void TodayWindow::turn() {
  lines_->turn();
  showWords();
}

void TodayWindow::openConverter() {
  emit converterWanted();
}

bool TodayWindow::drag(const QMouseEvent& mouse) {
  const QEvent::Type type = mouse.type();
  const QPoint position = mouse.globalPosition().toPoint();
  if (type == QEvent::MouseButtonPress && mouse.button() == Qt::LeftButton) {
    pressed_ = position;
    grip_ = position - pos();
  } else if (type == QEvent::MouseMove && pressed_) {
    if ((position - *pressed_).manhattanLength() < QApplication::startDragDistance()) return false;
    // The desktop moves it where it can: the only way there is on Wayland.
    if (windowHandle() == nullptr || !windowHandle()->startSystemMove()) {
      move(position - grip_);
      return true;
    }
    pressed_.reset();
  } else if (type == QEvent::MouseButtonRelease && pressed_) {
    const bool isClick =
        (position - *pressed_).manhattanLength() < QApplication::startDragDistance();
    pressed_.reset();
    if (isClick) openConverter();
  }
  return false;
}

bool TodayWindow::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
      return drag(static_cast<const QMouseEvent&>(*event));
    case QEvent::KeyPress:
      keyPressEvent(static_cast<QKeyEvent*>(event));
      return event->isAccepted();
    default:
      return QMainWindow::eventFilter(watched, event);
  }
}

void TodayWindow::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
      openConverter();
      break;
    case Qt::Key_Escape:
      close();
      break;
    default:
      event->ignore();
      return;
  }
  event->accept();
}

void TodayWindow::contextMenuEvent(QContextMenuEvent* event) {
  QMenu menu;
  menu.addAction(tr("&Open the converter"), QKeySequence(Qt::Key_Return), this,
                 &TodayWindow::openConverter);
  if (lines_->showsRates()) menu.addAction(tr("&Turn the rates around"), this, &TodayWindow::turn);
  menu.addSeparator();
  menu.addAction(tr("&Close"), QKeySequence(Qt::Key_Escape), this, &QWidget::close);
  menu.exec(event->globalPos());
}

void TodayWindow::timerEvent(QTimerEvent* event) {
  if (event->timerId() == wordsTimer_) showWords();
}

void TodayWindow::moveEvent(QMoveEvent* event) {
  if (isVisible()) QSettings().setValue(positionKey(), event->pos());
}

void TodayWindow::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  // Its children draw over the corners otherwise.
  QPainterPath path;
  path.addRoundedRect(QRectF(rect()), sized(kRadius), sized(kRadius));
  setMask(QRegion(path.toFillPolygon().toPolygon()));
}

void TodayWindow::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Theme& theme = themeOf(palette());
  painter.setPen(QPen(theme.hairline, 1));
  painter.setBrush(theme.window);
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), sized(kRadius),
                          sized(kRadius));
  painter.fillRect(QRect(0, sized(kHead) - 1, width(), 1), theme.hairline);
}

}  // namespace fexora::desktop
