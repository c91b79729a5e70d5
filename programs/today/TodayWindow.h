// The Today widget: a small window without a frame, that is dragged by its body and keeps its
// position.
#pragma once

#include <QMainWindow>
#include <QPoint>
#include <optional>

#include "programs/desktop/Desk.h"

class QListView;

namespace fexora::desktop {

class Appearance;
class FreshnessDot;
class HistoryThread;
class LinkButton;
class TextLine;
class TodayModel;

class TodayWindow final : public QMainWindow {
  Q_OBJECT

 public:
  TodayWindow(const Desk& desk, Appearance& appearance);

  // Shows what the store holds now.
  void reload();
  TodayModel& lines() { return *lines_; }

 signals:
  // A click, Return or Space.
  void converterWanted();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  void build();
  QWidget* buildHead();
  QWidget* buildFoot();
  void fit();
  void turn();
  void openConverter();
  bool drag(const class QMouseEvent& mouse);
  void showWords();

  Desk desk_;
  Appearance& appearance_;
  HistoryThread* history_;
  TodayModel* lines_;
  TextLine* heading_;
  TextLine* span_;
  LinkButton* mode_;
  QListView* list_;
  FreshnessDot* dot_;
  TextLine* age_;
  std::optional<QPoint> pressed_;
  QPoint grip_;
  int wordsTimer_ = 0;
  NotificationCenter::Token following_;
};

}  // namespace fexora::desktop
