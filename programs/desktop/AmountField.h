// The large field for the amount, with the source currency at its end and below it one line that
// says what was read: the result of a calculation, both readings of an ambiguous amount, or why
// there is none.
#pragma once

#include <QWidget>
#include <optional>

#include "programs/desktop/AmountReading.h"
#include "programs/desktop/Desk.h"

class QLineEdit;
class QPushButton;

namespace fexora::desktop {

class LinkButton;
class TextLine;

class AmountField final : public QWidget {
  Q_OBJECT

 public:
  explicit AmountField(QWidget* parent = nullptr);

  // Puts the plain number into the field and selects it; nothing is emitted.
  void setAmount(double amount);
  void setSource(const Currency& currency);

  // Empty when the text is no amount.
  std::optional<double> amount() const;
  const AmountReading& reading() const { return reading_; }
  // Whether a person has typed since the last setAmount() or setAmountKept().
  bool isTyped() const;
  // What stands there is in the store: it counts as typed no longer, and is selected.
  void setAmountKept();
  void focusAndSelect();
  // Types into the field as a key there does.
  void type(const QString& text);
  // Takes the other reading of an ambiguous amount; nothing for any other.
  void takeOther();
  QLineEdit& entry() { return *entry_; }
  QPushButton& sourceButton() { return *source_; }

 signals:
  void changed();
  // A code that was typed beside the amount.
  void currencyTyped(const QString& code);
  void sourceWanted();
  // Return, Escape, and the way down into the list.
  void accepted();
  void reverted();
  void downWanted();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void read();
  void showReading();
  void fitText();
  void selectText();
  QString readingText() const;
  QString amountInWords() const;
  void buildEntry();
  void buildLine();
  QRect frame() const;

  QLineEdit* entry_;
  QPushButton* source_;
  TextLine* statusLine_;
  LinkButton* otherReading_;
  AmountReading reading_;
  bool isOther_ = false;
  bool isCut_ = false;
  QString sourceName_;
  QString sourceCode_;
};

}  // namespace fexora::desktop
