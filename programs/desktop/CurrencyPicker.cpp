#include "programs/desktop/CurrencyPicker.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "programs/desktop/PickerDelegate.h"
#include "programs/desktop/PickerModel.h"
#include "programs/desktop/Style.h"
#include "programs/desktop/TextLine.h"

namespace fexora::desktop {
namespace {

constexpr int kPage = 7;

}  // namespace

CurrencyPicker::CurrencyPicker(const Desk& desk, Takes takes, QWidget* parent)
    : QDialog(parent),
      takes_(takes),
      model_(new PickerModel(desk, this)),
      entry_(new QLineEdit),
      list_(new QListView),
      take_(new QPushButton) {
  desk.catalogue.prepareSearch();
  setWindowTitle(takes == Takes::one ? tr("Convert from") : tr("Add currencies"));
  resize(sized(400), sized(460));
  entry_->setFont(fontOf(14));
  entry_->setMinimumHeight(sized(36));
  styleEntry(*entry_);
  entry_->setPlaceholderText(tr("Code, name, sign or country"));
  entry_->setAccessibleName(tr("Search currencies"));
  entry_->setClearButtonEnabled(true);
  entry_->installEventFilter(this);
  list_->setModel(model_);
  list_->setItemDelegate(new PickerDelegate(list_));
  list_->setUniformItemSizes(true);
  styleList(*list_);
  list_->setFocusPolicy(Qt::NoFocus);
  list_->setAccessibleName(tr("Currencies found"));
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  const auto add = [&](QWidget* widget, int vertical) {
    auto* const row = new QVBoxLayout;
    row->setContentsMargins(sized(14), sized(vertical), sized(14), sized(vertical));
    row->addWidget(widget);
    column->addLayout(row);
  };
  add(entry_, 10);
  column->addWidget(list_, 1);
  add(buildFoot(), 8);
  connect(entry_, &QLineEdit::textChanged, this, &CurrencyPicker::search);
  connect(list_, &QListView::clicked, this, &CurrencyPicker::click);
  connect(list_, &QListView::doubleClicked, this, &CurrencyPicker::takeWith);
  connect(model_, &QAbstractItemModel::dataChanged, this, &CurrencyPicker::showCount);
  search({});
}

QWidget* CurrencyPicker::buildFoot() {
  auto* const foot = new QWidget;
  auto* const column = new QVBoxLayout(foot);
  column->setContentsMargins(0, 0, 0, 0);
  auto* const row = new QHBoxLayout;
  if (takes_ == Takes::several) {
    auto* const hint = new TextLine(12);
    hint->setText(tr("A click or Ctrl+Return ticks several"));
    column->addWidget(hint);
  }
  column->addLayout(row);
  auto* const cancel = new QPushButton(tr("Cancel"));
  row->addStretch(1);
  row->addWidget(cancel);
  row->addWidget(take_);
  // Return means what is current, wherever the focus is not on a button.
  for (QPushButton* const button : {cancel, take_}) button->setAutoDefault(false);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(take_, &QPushButton::clicked, this, &QDialog::accept);
  return foot;
}

void CurrencyPicker::showCount() {
  const QString verb = takes_ == Takes::one || replaces_ ? tr("Choose") : tr("Add");
  const auto count = model_->ticked().size();
  take_->setText(count == 0 ? verb
                            : tr("%1 (%L2)", "a button, as in Add (2)")
                                  .arg(verb)
                                  .arg(static_cast<qulonglong>(count)));
  take_->setEnabled(!taken().empty());
}

void CurrencyPicker::setFirst(const std::vector<CurrencyRef>& first) {
  model_->setFirst(first);
  select(0);
}

void CurrencyPicker::setTicked(const std::vector<CurrencyRef>& ticked) {
  replaces_ = true;
  model_->setTicked(ticked);
}

std::vector<CurrencyRef> CurrencyPicker::taken() const {
  if (takes_ == Takes::several && !model_->ticked().empty()) return model_->ticked();
  const QModelIndex current = list_->currentIndex();
  if (!current.isValid()) return {};
  return {model_->currencyAt(current.row())};
}

void CurrencyPicker::search(const QString& text) {
  model_->setSearch(text);
  select(0);
  showCount();
}

void CurrencyPicker::select(int row) {
  if (model_->rowCount() == 0) return;
  list_->setCurrentIndex(model_->index(std::clamp(row, 0, model_->rowCount() - 1)));
}

void CurrencyPicker::click(const QModelIndex& index) {
  if (takes_ == Takes::one) return accept();
  model_->toggle(index.row());
}

void CurrencyPicker::takeWith(const QModelIndex& index) {
  if (!index.data(PickerModel::tickedRole).toBool()) model_->toggle(index.row());
  accept();
}

bool CurrencyPicker::handle(const QKeyEvent& key) {
  const int row = list_->currentIndex().row();
  switch (key.key()) {
    case Qt::Key_Down:
      select(row + 1);
      return true;
    case Qt::Key_Up:
      select(row - 1);
      return true;
    case Qt::Key_PageDown:
      select(row + kPage);
      return true;
    case Qt::Key_PageUp:
      select(row - kPage);
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (takes_ == Takes::several && key.modifiers().testFlag(Qt::ControlModifier)) {
        if (row >= 0) model_->toggle(row);
      } else if (!taken().empty()) {
        accept();
      }
      return true;
    default:
      return false;
  }
}

bool CurrencyPicker::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && handle(static_cast<const QKeyEvent&>(*event))) {
    return true;
  }
  return QDialog::eventFilter(watched, event);
}

}  // namespace fexora::desktop
