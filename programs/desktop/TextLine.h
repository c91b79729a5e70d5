// One line of text in a colour of the theme, cut with an ellipsis where it must be. What is cut, or
// said more shortly, comes whole in a tooltip.
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
  // What the text stands for; without it, the text itself.
  void setWhole(const QString& whole) { whole_ = whole; }
  QSize minimumSizeHint() const override;
  // Never shorter than its text; off by default.
  void setKeepsWhole(bool keeps);

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QColor colour() const;

  Tone tone_;
  QString whole_;
  bool keepsWhole_ = false;
};

}  // namespace fexora::desktop
