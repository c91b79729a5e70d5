#include "programs/desktop/RowDelegate.h"

#include "programs/desktop/RowPainting.h"

namespace fexora::desktop {

void RowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
  painter->save();
  RowPainting row(*painter, option);
  row.ground();
  paintRow(row, index);
  painter->restore();
}

QSize RowDelegate::sizeHint(const QStyleOptionViewItem& /*option*/,
                            const QModelIndex& /*index*/) const {
  return {sized(200), sized(height_)};
}

}  // namespace fexora::desktop
