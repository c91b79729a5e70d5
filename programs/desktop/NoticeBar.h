// One line that can be put away, with an action or without: a removed line's "Undo", the rates
// service's message.
#pragma once

#include <QWidget>
#include <functional>

namespace fexora::desktop {

class LinkButton;
class SignButton;
class TextLine;

class NoticeBar final : public QWidget {
  Q_OBJECT

 public:
  explicit NoticeBar(QWidget* parent = nullptr);

  // Shows the line instead of the one before. Without an `action` there is only the cross.
  void tell(const QString& text, const QString& action = {}, std::function<void()> run = {});
  QString text() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  TextLine* text_;
  LinkButton* action_;
  SignButton* close_;
  std::function<void()> run_;
};

}  // namespace fexora::desktop
