// Draws one row of the picker: code, name, sign, tick.
#pragma once

#include <QStyledItemDelegate>

namespace fexora::desktop {

class PickerDelegate final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace fexora::desktop
