// The footer: a dot, how fresh the rates are, Refresh; above it a line for a refresh that is under
// way or has failed.
#pragma once

#include <QTimer>
#include <QWidget>

#include "programs/desktop/Desk.h"
#include "programs/desktop/FreshnessText.h"

class QProgressBar;

namespace fexora::desktop {

class LinkButton;
class Refresher;
class TextLine;

class FreshnessCaption final : public QWidget {
  Q_OBJECT

 public:
  FreshnessCaption(const Desk& desk, Refresher& refresher, QWidget* parent = nullptr);

  // Looks at the store's rates anew.
  void refreshText();
  // A line that stays until the next refresh or an empty text: a store that cannot be written.
  void setProblem(const QString& problem);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void showState();
  void showBar();
  QString progressText() const;
  void fitText();

  Desk desk_;
  Refresher& refresher_;
  TextLine* rates_;
  TextLine* age_;
  TextLine* status_;
  QProgressBar* progress_;
  LinkButton* action_;
  QTimer nextWords_;
  QString problem_;
  FreshnessText words_;
};

}  // namespace fexora::desktop
