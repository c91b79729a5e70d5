// Says that the lines are by the rates of a past day, and leads back to today's.
#pragma once

#include <QWidget>

namespace fexora::desktop {

class LinkButton;
class TextLine;

class DayBar final : public QWidget {
  Q_OBJECT

 public:
  explicit DayBar(QWidget* parent = nullptr);

  // "2 March 2024", of which day its rates are, when that is an earlier one, and whose.
  void tell(const QString& day, const QString& ratesDay, const QString& source);
  QString text() const;

 signals:
  void todayWanted();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void fitText();

  TextLine* text_;
  LinkButton* today_;
  QStringList forms_;  // from the longest
};

}  // namespace fexora::desktop
