// What draws the rows of a list: all of one height, on one ground, each by its own kind.
#pragma once

#include <QStyledItemDelegate>

namespace fexora::desktop {

class RowPainting;

class RowDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  // The height as in Style's sized().
  explicit RowDelegate(double height, QObject* parent = nullptr)
      : QStyledItemDelegate(parent), height_(height) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const final;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 protected:
  // Draws what the row says; its ground is there.
  virtual void paintRow(RowPainting& row, const QModelIndex& index) const = 0;

  // In pixels; a row that is higher is drawn at its head.
  int height() const;

 private:
  double height_;
};

}  // namespace fexora::desktop
