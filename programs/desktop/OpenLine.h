// Opens one line of the conversion's list to the picture of how its rate moved, and closes it.
//
// By the sign beside the code, by Right or Space on the line, and by whoever calls; Escape closes.
#pragma once

#include <QListView>
#include <QObject>
#include <QPersistentModelIndex>
#include <QPointer>

#include "programs/desktop/Desk.h"

namespace fexora::desktop {

class HistoryThread;
class LineDelegate;
class LinesModel;
class PastImport;
class PlotPanel;

class OpenLine final : public QObject {
  Q_OBJECT

 public:
  // `list` shows `lines` by a LineDelegate that this sets. All of them outlive it.
  OpenLine(const Desk& desk, HistoryThread& history, LinesModel& lines, QListView& list);

  bool isOpen() const { return line_.isValid(); }
  // Instead of the one that is open; nothing for a row that is none.
  void open(int row);
  void close();
  // The panel of the line that is open, or null.
  PlotPanel* panel() const { return panel_; }
  PastImport& import() { return *import_; }
  // A key of the list; false when it is none of this.
  bool takesKey(const QKeyEvent& key);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void makeRoom();
  void follow();
  void step(int rows);

  Desk desk_;
  HistoryThread& history_;
  PastImport* import_;
  LinesModel& lines_;
  QListView& list_;
  LineDelegate* delegate_;
  QPersistentModelIndex line_;
  QPointer<PlotPanel> panel_;
};

}  // namespace fexora::desktop
