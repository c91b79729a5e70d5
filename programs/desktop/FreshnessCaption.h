// The footer: a dot, how fresh the rates are, Refresh; above it a line for a refresh that is under
// way or has failed, and one for a store that is in trouble.
#pragma once

#include <QTimer>
#include <QWidget>

#include "programs/desktop/Desk.h"
#include "programs/desktop/FreshnessText.h"

class QProgressBar;

namespace fexora::desktop {

class FreshnessDot;
class LinkButton;
class Refresher;
class TextLine;

class FreshnessCaption final : public QWidget {
  Q_OBJECT

 public:
  FreshnessCaption(const Desk& desk, Refresher& refresher, QWidget* parent = nullptr);

  // Looks at the store's rates anew.
  void refreshText();
  // Instead of the store's rates: of which past day they are, and from whom, or nothing; without a
  // day the store's again.
  void setPast(const QString& day, const QString& source = {});
  // Of the store, beside whatever a refresh says; stays until it is set to none.
  void setStoreProblem(const QString& problem);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void build();
  void connectParts();
  void showState();
  void showBar();
  QString progressText() const;
  void fitText();

  Desk desk_;
  Refresher& refresher_;
  FreshnessDot* dot_;
  TextLine* rates_;
  TextLine* age_;
  TextLine* store_;
  TextLine* status_;
  QProgressBar* progress_;
  LinkButton* action_;
  QTimer nextWords_;
  FreshnessText words_;
  QString pastDay_;
  QString pastSource_;
};

}  // namespace fexora::desktop
