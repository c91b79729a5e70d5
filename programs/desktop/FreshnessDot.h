// The dot before the age of rates: green while they are fresh.
#pragma once

#include <QWidget>

namespace fexora::desktop {

class FreshnessDot final : public QWidget {
  Q_OBJECT

 public:
  explicit FreshnessDot(QWidget* parent = nullptr);
  void setFresh(bool isFresh);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  bool isFresh_ = false;
};

}  // namespace fexora::desktop
