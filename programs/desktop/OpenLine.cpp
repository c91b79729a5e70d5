#include "programs/desktop/OpenLine.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include "programs/desktop/LineDelegate.h"
#include "programs/desktop/LinesModel.h"
#include "programs/desktop/PastImport.h"
#include "programs/desktop/PlotPanel.h"

namespace fexora::desktop {

OpenLine::OpenLine(const Desk& desk, HistoryThread& history, LinesModel& lines, QListView& list)
    : QObject(&list),
      desk_(desk),
      history_(history),
      import_(new PastImport(desk, history, this)),
      lines_(lines),
      list_(list),
      delegate_(new LineDelegate(&list)) {
  list.setItemDelegate(delegate_);
  list.setMouseTracking(true);
  list.viewport()->installEventFilter(this);
  connect(&lines, &LinesModel::layoutChanged, this, &OpenLine::follow);
  connect(&lines, &LinesModel::rowsRemoved, this, &OpenLine::follow);
  connect(&lines, &LinesModel::dataChanged, this, &OpenLine::follow);
}

void OpenLine::open(int row) {
  if (row < 0 || row >= lines_.rowCount()) return;
  const QModelIndex index = lines_.index(row);
  list_.setCurrentIndex(index);
  if (line_ != index) {
    close();
    line_ = index;
    panel_ = new PlotPanel(desk_, history_, *import_);
    connect(panel_, &PlotPanel::left, this, [this] {
      close();
      list_.setFocus(Qt::OtherFocusReason);
    });
    connect(panel_, &PlotPanel::stepped, this, &OpenLine::step);
    panel_->setPair(lines_.source(), lines_.currencyAt(row));
    // Lines are of one height only while all are closed.
    list_.setUniformItemSizes(false);
    list_.setIndexWidget(index, panel_);
    connect(panel_, &PlotPanel::heightChanged, this, &OpenLine::makeRoom);
    makeRoom();
  }
  list_.scrollTo(index);
  panel_->takeFocus();
}

void OpenLine::close() {
  const QModelIndex index = line_;
  line_ = QModelIndex();
  delegate_->setOpen({});
  if (index.isValid()) list_.setIndexWidget(index, nullptr);
  if (panel_ != nullptr) panel_->deleteLater();
  panel_ = nullptr;
  list_.setUniformItemSizes(true);
  list_.doItemsLayout();
}

void OpenLine::makeRoom() {
  delegate_->setOpen(line_, panel_->wantedHeight());
  list_.doItemsLayout();
  list_.scrollTo(line_);
}

// The list has other lines, or another source.
void OpenLine::follow() {
  if (panel_ == nullptr) return;
  if (!line_.isValid()) return close();
  panel_->setPair(lines_.source(), lines_.currencyAt(line_.row()));
}

void OpenLine::step(int rows) {
  list_.setFocus(Qt::OtherFocusReason);
  const QModelIndex next = lines_.index(line_.row() + rows);
  if (next.isValid()) list_.setCurrentIndex(next);
}

bool OpenLine::takesKey(const QKeyEvent& key) {
  const bool mirrored = list_.layoutDirection() == Qt::RightToLeft;
  const int into = mirrored ? Qt::Key_Left : Qt::Key_Right;
  if (key.key() == Qt::Key_Escape && isOpen()) {
    close();
  } else if (key.modifiers() == Qt::NoModifier &&
             (key.key() == into || key.key() == Qt::Key_Space)) {
    open(list_.currentIndex().isValid() ? list_.currentIndex().row() : -1);
  } else {
    return false;
  }
  return true;
}

// Of the list's viewport alone, which outlives what makes a list of it: nothing of the list is
// asked before a press.
bool OpenLine::eventFilter(QObject* /*watched*/, QEvent* event) {
  const bool isPress = event->type() == QEvent::MouseButtonPress;
  if (!isPress && event->type() != QEvent::MouseButtonDblClick) return false;
  const QPoint position = static_cast<const QMouseEvent*>(event)->position().toPoint();
  const QModelIndex index = list_.indexAt(position);
  if (!index.isValid() || !delegate_->signOf(list_.visualRect(index), index).contains(position)) {
    return false;
  }
  // Of a double click the second press does nothing more.
  if (isPress) line_ == index ? close() : open(index.row());
  return true;
}

}  // namespace fexora::desktop
