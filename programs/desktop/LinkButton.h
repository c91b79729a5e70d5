// A button that looks like a link: an action at the end of a line of text.
#pragma once

#include <QPushButton>

namespace fexora::desktop {

class LinkButton final : public QPushButton {
  Q_OBJECT

 public:
  explicit LinkButton(const QString& text = {}, QWidget* parent = nullptr, double pixels = 12);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace fexora::desktop
