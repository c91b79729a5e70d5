// A window in which a person searches currencies and takes one, or several with a tick.
#pragma once

#include <QDialog>
#include <vector>

#include "programs/desktop/Desk.h"

class QLineEdit;
class QListView;
class QPushButton;

namespace fexora::desktop {

class PickerModel;

class CurrencyPicker final : public QDialog {
  Q_OBJECT

 public:
  enum class Takes { one, several };
  CurrencyPicker(const Desk& desk, Takes takes, QWidget* parent = nullptr);

  // What stands first in the list.
  void setFirst(const std::vector<CurrencyRef>& first);
  // What has its tick at the beginning; what is ticked at the end then takes its place.
  void setTicked(const std::vector<CurrencyRef>& ticked);
  // Once accepted: the one, or the ticked ones, or without a tick the current one.
  std::vector<CurrencyRef> taken() const;

  PickerModel& model() { return *model_; }
  QLineEdit& entry() { return *entry_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void search(const QString& text);
  void select(int row);
  bool handle(const class QKeyEvent& key);
  void click(const QModelIndex& index);
  void takeWith(const QModelIndex& index);
  QWidget* buildFoot();
  void showCount();

  Takes takes_;
  PickerModel* model_;
  QLineEdit* entry_;
  QListView* list_;
  QPushButton* take_;
  bool replaces_ = false;
};

}  // namespace fexora::desktop
