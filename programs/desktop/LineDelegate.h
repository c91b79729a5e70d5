// Draws one line of the conversion: code over name at the start, amount over rate at the end.
#pragma once

#include <QPersistentModelIndex>

#include "programs/desktop/RowDelegate.h"

namespace fexora::desktop {

// For a view of a LinesModel. Amounts are never cut: a long one is drawn smaller, and the name
// makes room for it. Names and rates end with an ellipsis where
// they must; a rate of another day than the rest makes room for that day.
class LineDelegate final : public RowDelegate {
  Q_OBJECT

 public:
  explicit LineDelegate(QObject* parent = nullptr) : RowDelegate(58, parent) {}

  // The line that has room below it, in pixels; an index that is invalid for none.
  void setOpen(const QPersistentModelIndex& line, int room = 0) {
    open_ = line;
    room_ = room;
  }
  // Where the sign stands that opens or closes a line of that rectangle.
  QRect signOf(const QRect& line, const QModelIndex& index) const;

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  void updateEditorGeometry(QWidget* panel, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const override;

 protected:
  void paintRow(RowPainting& row, const QModelIndex& index) const override;

 private:
  QPersistentModelIndex open_;
  int room_ = 0;
};

}  // namespace fexora::desktop
