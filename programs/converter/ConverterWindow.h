// The converter's window: the amount, the selection's lines, how fresh the rates are.
#pragma once

#include <QMainWindow>
#include <memory>

#include "programs/desktop/Desk.h"

class QListView;
class QMenu;

namespace fexora::desktop {

class AmountField;
class Appearance;
class DayBar;
class FreshnessCaption;
class HistoryThread;
class LinesFilter;
class LinesModel;
class NoticeBar;
class OpenLine;
class PastDayRates;
class Refresher;
class SettingsPage;

class ConverterWindow final : public QMainWindow {
  Q_OBJECT

 public:
  ConverterWindow(const Desk& desk, Appearance& appearance);
  ~ConverterWindow() override;

  // Words of a command line: an amount, its currency, and currencies for the list.
  void take(const QStringList& words);
  void activate();

  AmountField& field() { return *field_; }
  LinesModel& lines() { return *lines_; }
  QListView& list() { return *list_; }
  NoticeBar& notice() { return *notice_; }
  DayBar& dayBar() { return *dayBar_; }
  OpenLine& openLine() { return *open_; }
  Refresher& refresher() { return *refresher_; }
  void showSettings();
  // By the rates of that day until Escape.
  void showDay(Day day);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void build();
  QWidget* buildStrip();
  void buildList();
  void buildMenu();
  void addAction(const QString& text, const QString& keys, void (ConverterWindow::*run)());
  void connectParts();
  void loadSource();
  void followStore();
  void settingsChanged();

  void convert();
  void takeCurrency(const CurrencyRef& currency);
  void chooseSource();
  void focusList();
  void findInList();
  void addCurrencies();
  void swapWithFirst();
  void makeSource(int row);
  void removeCurrent();
  void undoRemove();
  void moveCurrent(int by);
  void copyNumber();
  void copyLine();
  void copyTable();
  void refreshRates();
  void revert();
  void chooseDay();
  void showToday();
  void followTypedDay();
  void showPast();
  void offerPast();
  void showImport();
  void showHistory();
  void openToday();
  void focusField();
  void takeOtherReading();
  void showAbout();
  void accept();
  void save();
  void showMenu(const QPoint& position);
  bool listKey(const class QKeyEvent& key);
  int currentRow() const;
  void showTitle();
  void showProblem();

  Desk desk_;
  Appearance& appearance_;
  HistoryThread* history_;
  Refresher* refresher_;
  PastDayRates* past_;
  bool isDayTyped_ = false;     // and goes with the text
  bool isPastOffered_ = false;  // by the notice
  StoreSourceRef beforeTyping_;
  LinesModel* lines_;
  AmountField* field_;
  DayBar* dayBar_;
  NoticeBar* notice_;
  QListView* list_;
  OpenLine* open_ = nullptr;
  LinesFilter* filter_ = nullptr;
  FreshnessCaption* caption_;
  QMenu* menu_;
  SettingsPage* settings_ = nullptr;
  bool isKept_ = true;       // what is shown is in the store, or is no amount
  bool isLossTold_ = false;  // that it cannot be kept, to one who wanted to close
  NotificationCenter::Token following_;
};

}  // namespace fexora::desktop
