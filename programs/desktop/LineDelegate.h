// Draws one line of the conversion: code over name at the start, amount over rate at the end.
#pragma once

#include "programs/desktop/RowDelegate.h"

namespace fexora::desktop {

// For a view of a LinesModel. Amounts are never cut: a long one is drawn smaller, and the name
// makes room for it. Names and rates end with an ellipsis where
// they must; a rate of another day than the rest makes room for that day.
class LineDelegate final : public RowDelegate {
  Q_OBJECT

 public:
  explicit LineDelegate(QObject* parent = nullptr) : RowDelegate(58, parent) {}

 protected:
  void paintRow(RowPainting& row, const QModelIndex& index) const override;
};

}  // namespace fexora::desktop
