// One line of text in a colour of the theme, cut with an ellipsis where it must be.
#pragma once

#include <QLabel>

namespace fexora::desktop {

class TextLine final : public QLabel {
  Q_OBJECT

 public:
  enum class Tone { text, dim, accent, warning };
  explicit TextLine(double pixels, Tone tone = Tone::dim, QFont::Weight weight = QFont::Normal,
                    QWidget* parent = nullptr);

  void setTone(Tone tone);
  // A cut text comes whole in a tooltip.
  QSize minimumSizeHint() const override;
  // Never shorter than its text; off by default.
  void setKeepsWhole(bool keeps);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QColor colour() const;

  Tone tone_;
  bool keepsWhole_ = false;
};

}  // namespace fexora::desktop
