// Draws one row of the picker: code, name, sign, tick.
#pragma once

#include "programs/desktop/RowDelegate.h"

namespace fexora::desktop {

class PickerDelegate final : public RowDelegate {
  Q_OBJECT

 public:
  explicit PickerDelegate(QObject* parent = nullptr) : RowDelegate(42, parent) {}

 protected:
  void paintRow(RowPainting& row, const QModelIndex& index) const override;
};

}  // namespace fexora::desktop
