// Draws one line of the conversion: code over name at the start, amount over rate at the end.
#pragma once

#include <QStyledItemDelegate>

namespace fexora::desktop {

// For a view of a LinesModel. Amounts are never cut: a long one is drawn smaller, and the name
// makes room for it. Names and rates end with an ellipsis where they must.
class LineDelegate final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace fexora::desktop
