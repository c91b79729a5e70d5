// A flat button that shows a sign and no text. The signs are drawn: as letters they would come from
// whichever font has them, and that font's reading would hold the first window up.
#pragma once

#include <QToolButton>

namespace fexora::desktop {

class SignButton final : public QToolButton {
  Q_OBJECT

 public:
  enum class Sign { menu, swap, close };

  // Its name is what a screen reader says, and with the keys, if any, what its tip says.
  SignButton(Sign sign, const QString& name, const QString& keys = {}, QWidget* parent = nullptr);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Sign sign_;
};

}  // namespace fexora::desktop
