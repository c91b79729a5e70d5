// Draws one line of the Today widget: a name at the start, an amount at the end.
#pragma once

#include <QStyledItemDelegate>

namespace fexora::desktop {

class TodayDelegate final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace fexora::desktop
