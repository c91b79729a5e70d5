// Draws one line of the Today widget: a name at the start, an amount at the end.
#pragma once

#include "programs/desktop/RowDelegate.h"

namespace fexora::desktop {

class TodayDelegate final : public RowDelegate {
  Q_OBJECT

 public:
  explicit TodayDelegate(QObject* parent = nullptr) : RowDelegate(34, parent) {}

 protected:
  void paintRow(RowPainting& row, const QModelIndex& index) const override;
};

}  // namespace fexora::desktop
