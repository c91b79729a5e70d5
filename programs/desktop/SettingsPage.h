// The settings of both windows on one page; each change is saved at once.
#pragma once

#include <QDialog>

#include "programs/desktop/Desk.h"

class QCheckBox;
class QComboBox;
class QFormLayout;
class QPushButton;
class QSpinBox;

namespace fexora::desktop {

class SettingsPage final : public QDialog {
  Q_OBJECT

 public:
  explicit SettingsPage(const Desk& desk, QWidget* parent = nullptr);

  // Shows what the store holds; saves nothing.
  void reload();

 signals:
  // A setting of the store has another value.
  void changed();

 private:
  void buildFields();
  void addFields(QFormLayout& form);
  void connectFields();
  // Saves by `set` unless the page is being filled.
  template <class Set>
  void save(Set set);
  void chooseToday();
  void chooseRelative();
  void showChoices();

  Desk desk_;
  bool isFilling_ = false;
  QSpinBox* fraction_;
  QCheckBox* separators_;
  QComboBox* mode_;
  QComboBox* naming_;
  QSpinBox* number_;
  QPushButton* today_;
  QPushButton* useSelection_;
  QComboBox* conversion_;
  QPushButton* relative_;
  QCheckBox* trend_;
  QComboBox* ratesFrom_;
  QCheckBox* autostart_;
};

}  // namespace fexora::desktop
