// The button with the source currency's code, at the end of the amount field.
#pragma once

#include <QPushButton>

namespace fexora::desktop {

class SourceButton final : public QPushButton {
  Q_OBJECT

 public:
  explicit SourceButton(QWidget* parent = nullptr);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace fexora::desktop
