#include "programs/desktop/RowDelegate.h"

#include "programs/desktop/RowPainting.h"

namespace fexora::desktop {

void RowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
  painter->save();
  QStyleOptionViewItem head = option;
  head.rect.setHeight(height());
  RowPainting row(*painter, head);
  row.ground();
  paintRow(row, index);
  painter->restore();
}

QSize RowDelegate::sizeHint(const QStyleOptionViewItem& /*option*/,
                            const QModelIndex& /*index*/) const {
  return {sized(200), height()};
}

int RowDelegate::height() const {
  return sized(height_);
}

}  // namespace fexora::desktop
