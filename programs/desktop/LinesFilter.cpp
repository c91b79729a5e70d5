#include "programs/desktop/LinesFilter.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QSet>
#include <cstdint>

#include "programs/desktop/LinesModel.h"
#include "programs/desktop/QtText.h"
#include "programs/desktop/Style.h"

namespace fexora::desktop {

LinesFilter::LinesFilter(const Desk& desk, QListView& list, QWidget* parent)
    : QWidget(parent), desk_(desk), list_(list), entry_(new QLineEdit) {
  entry_->setFont(fontOf(12));
  entry_->setMinimumHeight(sized(30));
  styleEntry(*entry_);
  entry_->setPlaceholderText(tr("Find in the list"));
  entry_->setAccessibleName(tr("Find in the list"));
  entry_->setToolTip(tr("Find in the list") + " (Ctrl+Shift+F)");
  entry_->installEventFilter(this);
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(sized(18), 0, sized(18), sized(8));
  row->addWidget(entry_);
  // The button is seen beside a text alone, and Qt looks through the themes of icons for it.
  connect(entry_, &QLineEdit::textChanged, entry_, [this] { entry_->setClearButtonEnabled(true); });
  connect(entry_, &QLineEdit::textChanged, this, &LinesFilter::apply);
  // However lines come and go.
  const QAbstractItemModel& model = *list.model();
  connect(&model, &QAbstractItemModel::layoutChanged, this, &LinesFilter::apply);
  connect(&model, &QAbstractItemModel::rowsRemoved, this, &LinesFilter::apply);
  apply();
}

bool LinesFilter::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn) desk_.catalogue.prepareSearch();
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  switch (static_cast<const QKeyEvent&>(*event).key()) {
    case Qt::Key_Escape:
      if (!entry_->text().isEmpty()) {
        entry_->clear();
        return true;
      }
      [[fallthrough]];
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Down:
      emit left();
      return true;
    default:
      return QWidget::eventFilter(watched, event);
  }
}

void LinesFilter::apply() {
  const int lines = list_.model()->rowCount();
  const bool isLong = lines > kFewLines;
  setVisible(isLong);
  const QString text = isLong ? entry_->text().trimmed() : QString();
  QSet<QString> found;
  if (!text.isEmpty()) {
    constexpr std::int64_t kAll = 10'000;
    for (const auto& currency : desk_.catalogue.rankedCurrencies(text.toStdString(), kAll)) {
      found.insert(codeOf(*currency));
    }
  }
  for (int row = 0; row < lines; ++row) {
    const bool isOut =
        !text.isEmpty() &&
        !found.contains(list_.model()->index(row, 0).data(LinesModel::codeRole).toString());
    if (list_.isRowHidden(row) != isOut) list_.setRowHidden(row, isOut);
  }
  // What cannot be seen is not what Delete removes.
  const QModelIndex current = list_.currentIndex();
  if (current.isValid() && list_.isRowHidden(current.row())) list_.setCurrentIndex({});
}

}  // namespace fexora::desktop
