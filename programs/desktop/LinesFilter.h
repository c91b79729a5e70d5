// A field above a long list of lines that leaves those in sight which the search finds.
#pragma once

#include <QWidget>

#include "programs/desktop/Desk.h"

class QLineEdit;
class QListView;

namespace fexora::desktop {

class LinesModel;

// Hidden, and without effect, while there are few lines. `list` shows a LinesModel; both must
// outlive this.
class LinesFilter final : public QWidget {
  Q_OBJECT

 public:
  static constexpr int kFewLines = 30;

  LinesFilter(const Desk& desk, QListView& list, QWidget* parent);

  QLineEdit& entry() { return *entry_; }

 signals:
  // Return, Down, or Escape in the empty field: on to the list.
  void left();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void apply();

  Desk desk_;
  QListView& list_;
  QLineEdit* entry_;
};

}  // namespace fexora::desktop
