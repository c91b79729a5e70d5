#include "programs/converter/ConverterWindow.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "programs/desktop/AmountField.h"
#include "programs/desktop/Appearance.h"
#include "programs/desktop/Companion.h"
#include "programs/desktop/CurrencyPicker.h"
#include "programs/desktop/DayBar.h"
#include "programs/desktop/DayPicker.h"
#include "programs/desktop/EndSignals.h"
#include "programs/desktop/FreshnessCaption.h"
#include "programs/desktop/FreshnessText.h"
#include "programs/desktop/HistoryThread.h"
#include "programs/desktop/Languages.h"
#include "programs/desktop/LinesFilter.h"
#include "programs/desktop/LinesModel.h"
#include "programs/desktop/LinkButton.h"
#include "programs/desktop/NoticeBar.h"
#include "programs/desktop/OpenLine.h"
#include "programs/desktop/PastDayRates.h"
#include "programs/desktop/PastImport.h"
#include "programs/desktop/PlotPanel.h"
#include "programs/desktop/QtText.h"
#include "programs/desktop/Refresher.h"
#include "programs/desktop/SettingsPage.h"
#include "programs/desktop/SignButton.h"
#include "programs/desktop/SourceText.h"
#include "programs/desktop/Style.h"
#include "programs/shared/Selection.h"
#include "programs/shared/SentenceText.h"

namespace fexora::desktop {
namespace {

QString geometryKey() {
  return QStringLiteral("converter/geometry");
}

}  // namespace

ConverterWindow::ConverterWindow(const Desk& desk, Appearance& appearance)
    : desk_(desk),
      appearance_(appearance),
      history_(new HistoryThread(desk, this)),
      refresher_(new Refresher(desk, *history_, this)),
      past_(new PastDayRates(*history_, this)),
      lines_(new LinesModel(desk, this)),
      field_(new AmountField),
      dayBar_(new DayBar),
      notice_(new NoticeBar),
      list_(new QListView),
      caption_(new FreshnessCaption(desk, *refresher_)),
      menu_(new QMenu(this)) {
  setWindowTitle(QStringLiteral("Fexora"));
  build();
  buildMenu();
  connectParts();
  loadSource();
  showProblem();
  following_ =
      desk_.platform.notifications->addObserver(fileWatcherUpdate, [this] { followStore(); });
  desk_.store.setAfterSave([this] {
    if (desk_.store.saveProblem().empty()) {
      isKept_ = true;
      isLossTold_ = false;
    }
    showProblem();
  });
  // Narrower ones cut what matters.
  setMinimumWidth(sized(240));
  resize(sized(400), sized(580));
  restoreGeometry(QSettings().value(geometryKey()).toByteArray());
  field_->focusAndSelect();
}

ConverterWindow::~ConverterWindow() {
  desk_.store.setAfterSave({});
}

void ConverterWindow::build() {
  auto* const middle = new QWidget;
  auto* const column = new QVBoxLayout(middle);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  auto* const top = new QVBoxLayout;
  top->setContentsMargins(sized(18), sized(18), sized(18), sized(8));
  top->addWidget(field_);
  column->addLayout(top);
  column->addWidget(dayBar_);
  column->addWidget(notice_);
  buildList();
  filter_ = new LinesFilter(desk_, *list_, middle);
  column->addWidget(filter_);
  column->addWidget(list_, 1);
  column->addWidget(buildStrip());
  column->addWidget(caption_);
  setCentralWidget(middle);
}

void ConverterWindow::buildList() {
  lines_->setPast(*past_);
  list_->setModel(lines_);
  open_ = new OpenLine(desk_, *history_, *lines_, *list_);
  list_->setUniformItemSizes(true);
  styleList(*list_);
  list_->setDragDropMode(QAbstractItemView::InternalMove);
  list_->setDefaultDropAction(Qt::MoveAction);
  list_->setContextMenuPolicy(Qt::CustomContextMenu);
  list_->setAccessibleName(tr("Converted amounts"));
  list_->setMinimumHeight(sized(58));
  list_->installEventFilter(this);
}

QWidget* ConverterWindow::buildStrip() {
  auto* const strip = new QWidget;
  strip->setAutoFillBackground(true);
  strip->setBackgroundRole(QPalette::Base);
  auto* const row = new QHBoxLayout(strip);
  row->setContentsMargins(sized(14), sized(6), sized(14), sized(6));
  auto* const add = new LinkButton(tr("+ Add currency"), nullptr, 13);
  add->setToolTip(tr("Add currencies (Ctrl+F)"));
  connect(add, &QPushButton::clicked, this, &ConverterWindow::addCurrencies);
  auto* const swap =
      new SignButton(SignButton::Sign::swap, tr("Swap with the first line"), "Ctrl+I");
  connect(swap, &SignButton::clicked, this, &ConverterWindow::swapWithFirst);
  auto* const menu = new SignButton(SignButton::Sign::menu, tr("Menu"), "F10");
  menu->setMenu(menu_);
  menu->setPopupMode(QToolButton::InstantPopup);
  menu->setShortcut(Qt::Key_F10);
  row->addWidget(add);
  row->addStretch(1);
  row->addWidget(swap);
  row->addWidget(menu);
  return strip;
}

void ConverterWindow::addAction(const QString& text, const QString& keys,
                                void (ConverterWindow::*run)()) {
  QAction* const action = menu_->addAction(text);
  action->setShortcuts(QKeySequence::listFromString(keys));
  connect(action, &QAction::triggered, this, run);
  QMainWindow::addAction(action);
}

void ConverterWindow::buildMenu() {
  addAction(tr("&Amount"), "Ctrl+L", &ConverterWindow::focusField);
  addAction(tr("&Other reading of the amount"), "Alt+R", &ConverterWindow::takeOtherReading);
  addAction(tr("Convert &from…"), "Ctrl+K; Alt+Down", &ConverterWindow::chooseSource);
  addAction(tr("&Swap with the first line"), "Ctrl+I", &ConverterWindow::swapWithFirst);
  menu_->addSeparator();
  addAction(tr("Add &currencies…"), "Ctrl+F; Ctrl+N", &ConverterWindow::addCurrencies);
  addAction(tr("&Find in the list"), "Ctrl+Shift+F", &ConverterWindow::findInList);
  addAction(tr("Copy all &lines"), "Ctrl+Shift+A", &ConverterWindow::copyTable);
  addAction(tr("&Refresh rates"), "F5; Ctrl+R", &ConverterWindow::refreshRates);
  addAction(tr("&How the rate moved"), "Ctrl+H", &ConverterWindow::showHistory);
  addAction(tr("Rates of a &day…"), "Ctrl+D", &ConverterWindow::chooseDay);
  menu_->addSeparator();
  addAction(tr("Show &Today"), "Ctrl+T", &ConverterWindow::openToday);
  addAction(tr("S&ettings…"), "Ctrl+,", &ConverterWindow::showSettings);
  addAction(tr("A&bout Fexora"), "F1", &ConverterWindow::showAbout);
  QAction* const quit = menu_->addAction(tr("&Quit"));
  quit->setShortcut(QKeySequence("Ctrl+Q"));
  connect(quit, &QAction::triggered, this, &QWidget::close);
  QMainWindow::addAction(quit);
}

void ConverterWindow::connectParts() {
  connect(field_, &AmountField::currencyTyped, this, [this](const QString& code) {
    takeCurrency(desk_.catalogue.currencyForCode(code.toStdString()));
  });
  connect(field_, &AmountField::changed, this, &ConverterWindow::convert);
  connect(field_, &AmountField::sourceWanted, this, &ConverterWindow::chooseSource);
  connect(field_, &AmountField::accepted, this, &ConverterWindow::accept);
  connect(field_, &AmountField::reverted, this, &ConverterWindow::revert);
  connect(dayBar_, &DayBar::todayWanted, this, &ConverterWindow::showToday);
  connect(past_, &PastDayRates::changed, this, &ConverterWindow::showPast);
  connect(&open_->import(), &PastImport::stateChanged, this, &ConverterWindow::showImport);
  connect(field_, &AmountField::downWanted, this, &ConverterWindow::focusList);
  connect(filter_, &LinesFilter::left, this, &ConverterWindow::focusList);
  connect(list_, &QListView::doubleClicked, this,
          [this](const QModelIndex& index) { makeSource(index.row()); });
  connect(list_, &QWidget::customContextMenuRequested, this, &ConverterWindow::showMenu);
  connect(refresher_, &Refresher::refreshed, this, [this] {
    lines_->reload();
    showTitle();
    notice_->tell(lineOf(desk_.rates.serviceMessage()));
  });
}

// The store's amount and source: at the start, after Escape, and when the other process changed
// them.
void ConverterWindow::loadSource() {
  const StoreSourceRef last = desk_.store.loadSourceCurrency();
  const CurrencyRef source = last != nullptr ? last->currency() : nullptr;
  if (source != nullptr) lines_->setSource(program::withoutDoubles({source}).front());
  field_->setSource(*lines_->source());
  field_->setAmount(source != nullptr ? last->amount().doubleValue() : 1);
  lines_->setAmount(field_->amount());
  beforeTyping_ = last;
  showTitle();
}

void ConverterWindow::followStore() {
  lines_->reload();
  appearance_.apply();
  caption_->refreshText();
  if (settings_ != nullptr) settings_->reload();
  if (isActiveWindow() && !isKept_) {
    // What was not yet saved goes over what came.
    lines_->record();
  } else if (past_->day()) {
    // What is shown of the past is nobody's last amount, and stays.
  } else if (!isActiveWindow() || !field_->entry().hasFocus() || !field_->isTyped()) {
    loadSource();
    isKept_ = true;
  }
  showTitle();
  showProblem();
}

void ConverterWindow::settingsChanged() {
  appearance_.apply();
  lines_->setAmount(field_->amount());
  showTitle();
}

void ConverterWindow::convert() {
  followTypedDay();
  lines_->setAmount(field_->amount());
  if (field_->amount() && !past_->day()) isKept_ = false;
  lines_->record();
  showTitle();
}

void ConverterWindow::takeCurrency(const CurrencyRef& currency) {
  if (currency == nullptr) return;
  lines_->setSource(currency);
  field_->setSource(*currency);
}

void ConverterWindow::chooseSource() {
  CurrencyPicker picker(desk_, CurrencyPicker::Takes::one, this);
  picker.setFirst(lines_->selection());
  if (picker.exec() != QDialog::Accepted) return;
  takeCurrency(picker.taken().front());
  convert();
  field_->focusAndSelect();
}

void ConverterWindow::focusList() {
  list_->setFocus(Qt::TabFocusReason);
  if (list_->currentIndex().isValid()) return;
  int row = 0;
  while (list_->isRowHidden(row)) ++row;
  list_->setCurrentIndex(lines_->index(row));
}

void ConverterWindow::findInList() {
  if (filter_->isVisible()) filter_->entry().setFocus(Qt::ShortcutFocusReason);
}

void ConverterWindow::addCurrencies() {
  CurrencyPicker picker(desk_, CurrencyPicker::Takes::several, this);
  if (picker.exec() != QDialog::Accepted) return;
  lines_->add(picker.taken());
  list_->scrollToBottom();
  showTitle();
}

void ConverterWindow::swapWithFirst() {
  const int row = currentRow();
  makeSource(row >= 0 ? row : 0);
}

// The amount goes with it, so that what was there comes back in its line.
void ConverterWindow::makeSource(int row) {
  if (row < 0 || row >= lines_->rowCount()) return;
  const auto value = lines_->valueAt(row);
  takeCurrency(lines_->currencyAt(row));
  if (value) field_->setAmount(*value);
  convert();
  field_->focusAndSelect();
}

void ConverterWindow::removeCurrent() {
  const int row = currentRow();
  if (row < 0) return;
  const QString name = nameOf(*lines_->currencyAt(row));
  lines_->remove(row);
  notice_->tell(tr("%1 was removed.").arg(name), tr("Undo (Ctrl+Z)"), [this] { undoRemove(); });
  showTitle();
}

void ConverterWindow::undoRemove() {
  if (lines_->restore()) notice_->tell({});
  showTitle();
}

void ConverterWindow::moveCurrent(int by) {
  const int row = currentRow();
  if (row < 0) return;
  // Rows are moved before another one, so one place down is before the one after the next.
  lines_->moveRows({}, row, 1, {}, by > 0 ? row + 2 : row - 1);
  list_->scrollTo(list_->currentIndex());
}

void ConverterWindow::copyNumber() {
  const QString number = lines_->index(currentRow()).data(LinesModel::numberRole).toString();
  if (!number.isEmpty()) QApplication::clipboard()->setText(number);
}

void ConverterWindow::copyLine() {
  const int row = currentRow();
  if (row < 0) return;
  const QModelIndex index = lines_->index(row);
  QApplication::clipboard()->setText(index.data(LinesModel::amountRole).toString() + ' ' +
                                     index.data(LinesModel::codeRole).toString());
}

void ConverterWindow::copyTable() {
  QApplication::clipboard()->setText(lines_->tableText());
}

void ConverterWindow::refreshRates() {
  refresher_->start();
}

// Of the current line, or of the first; once more, and it is closed.
void ConverterWindow::showHistory() {
  const int row = std::max(currentRow(), 0);
  const bool isShown = open_->isOpen() && open_->panel()->isAncestorOf(focusWidget());
  isShown ? open_->close() : open_->open(row);
}

void ConverterWindow::revert() {
  past_->day() ? showToday() : loadSource();
}

void ConverterWindow::chooseDay() {
  DayPicker picker(desk_, past_->day(), this);
  if (picker.exec() == QDialog::Accepted) showDay(picker.day());
}

void ConverterWindow::showDay(Day day) {
  save();
  isDayTyped_ = false;
  past_->setDay(day);
}

// What was converted by another day's rates is left behind with them.
void ConverterWindow::showToday() {
  isDayTyped_ = false;
  past_->setDay({});
  loadSource();
  if (std::exchange(isPastOffered_, false)) notice_->tell({});
}

// The day that stands in the text counts for as long as it stands there.
void ConverterWindow::followTypedDay() {
  const auto typed = field_->reading().day;
  if (!typed && !isDayTyped_) return;
  isDayTyped_ = typed.has_value();
  // What the keys before the day have recorded is no last amount either.
  if (!past_->day() && beforeTyping_ != nullptr) {
    desk_.store.saveSourceCurrency(beforeTyping_->currency(), beforeTyping_->amount().doubleValue(),
                                   true);
    isKept_ = true;
  }
  past_->setDay(typed);
}

void ConverterWindow::showPast() {
  const auto& day = past_->day();
  const auto inWords = [this](Day of) {
    return desktop::inWords(of, desk_.now(), languageLocale());
  };
  const QString source = past_->hasAny() ? sourceInWords(past_->mainSource()) : QString();
  dayBar_->setVisible(day.has_value());
  caption_->setPast(day ? inWords(past_->mainDay().value_or(*day)) : QString(), source);
  showTitle();
  if (!day) return;
  dayBar_->tell(inWords(*day), past_->hasAny() ? inWords(*past_->mainDay()) : QString(), source);
  if (past_->isAnswered()) offerPast();
}

// Where no line has a rate of the day.
void ConverterWindow::offerPast() {
  if (open_->import().isRunning()) return;
  const bool wasOffered = std::exchange(isPastOffered_, !past_->hasAny() && lines_->rowCount() > 0);
  if (!past_->problem().empty()) {
    notice_->tell(lineOf(past_->problem()));
  } else if (isPastOffered_) {
    notice_->tell(tr("No rates for that day are kept."), tr("Get the past (1 MB)"),
                  [this] { open_->import().start(); });
  } else if (wasOffered) {
    notice_->tell({});
  }
}

void ConverterWindow::showImport() {
  PastImport& import = open_->import();
  if (!isPastOffered_) return;
  if (!import.isRunning()) return notice_->tell(import.problem());
  notice_->tell(import.inWords(), tr("Stop"), [&import] { import.stop(); });
}

void ConverterWindow::openToday() {
  save();
  if (!openCompanion(Companion::today)) notice_->tell(tr("Today could not be started."));
}

void ConverterWindow::showSettings() {
  if (settings_ == nullptr) {
    settings_ = new SettingsPage(desk_, this);
    connect(settings_, &SettingsPage::changed, this, &ConverterWindow::settingsChanged);
  }
  settings_->reload();
  settings_->show();
  settings_->raise();
  settings_->activateWindow();
}

void ConverterWindow::focusField() {
  field_->focusAndSelect();
}

void ConverterWindow::takeOtherReading() {
  field_->takeOther();
}

void ConverterWindow::showAbout() {
  QMessageBox::about(this, tr("About Fexora"),
                     tr("Fexora %1\n\nConverts an amount into every currency you chose, offline, "
                        "and says how old its rates are.")
                         .arg(QApplication::applicationVersion()));
}

void ConverterWindow::save() {
  if (!isKept_) lines_->keep();
  field_->setAmountKept();
  beforeTyping_ = desk_.store.loadSourceCurrency();
}

void ConverterWindow::showMenu(const QPoint& position) {
  const QModelIndex index = list_->indexAt(position);
  if (!index.isValid()) return;
  list_->setCurrentIndex(index);
  QMenu menu;
  const auto add = [&](const QString& text, const char* keys, auto run) {
    menu.addAction(text, QKeySequence(QString::fromLatin1(keys)), this, run);
  };
  add(tr("&Convert from this"), "Return", [this] { makeSource(currentRow()); });
  add(tr("&How the rate moved"), "Right", [this] { open_->open(currentRow()); });
  menu.addSeparator();
  add(tr("Copy the &number"), "Ctrl+C", &ConverterWindow::copyNumber);
  add(tr("Copy “%1”").arg(lines_->lineText(index.row())), "Ctrl+Shift+C",
      &ConverterWindow::copyLine);
  add(tr("Copy &all lines"), "Ctrl+Shift+A", &ConverterWindow::copyTable);
  menu.addSeparator();
  add(tr("Move &up"), "Alt+Up", [this] { moveCurrent(-1); });
  add(tr("Move &down"), "Alt+Down", [this] { moveCurrent(1); });
  add(tr("&Remove"), "Delete", &ConverterWindow::removeCurrent);
  menu.exec(list_->viewport()->mapToGlobal(position));
}

bool ConverterWindow::listKey(const QKeyEvent& key) {
  const bool alt = key.modifiers().testFlag(Qt::AltModifier);
  const bool shift = key.modifiers().testFlag(Qt::ShiftModifier);
  const bool control = key.modifiers().testFlag(Qt::ControlModifier);
  const auto is = [&](int wanted) { return key.key() == wanted; };
  if (open_->takesKey(key)) {
    // It has done what there is to do.
  } else if (is(Qt::Key_Escape) && past_->day()) {
    showToday();
  } else if (alt && (is(Qt::Key_Up) || is(Qt::Key_Down))) {
    moveCurrent(is(Qt::Key_Up) ? -1 : 1);
  } else if (is(Qt::Key_Return) || is(Qt::Key_Enter)) {
    makeSource(currentRow());
  } else if (is(Qt::Key_Delete)) {
    removeCurrent();
  } else if (control && is(Qt::Key_Z)) {
    undoRemove();
  } else if (control && is(Qt::Key_C)) {
    shift ? copyLine() : copyNumber();
  } else if (is(Qt::Key_Up) && currentRow() <= 0) {
    focusField();
  } else if (!control && !alt && !key.text().isEmpty() && key.text().at(0).isPrint() &&
             !is(Qt::Key_Space)) {
    field_->type(key.text());
  } else {
    return false;
  }
  return true;
}

bool ConverterWindow::eventFilter(QObject* watched, QEvent* event) {
  // Before the window's shortcuts, of which Alt+Down is another one.
  if (watched == list_ && event->type() == QEvent::ShortcutOverride) {
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (key.modifiers().testFlag(Qt::AltModifier) && key.key() == Qt::Key_Down) {
      event->accept();
      return true;
    }
  }
  if (watched == list_ && event->type() == QEvent::KeyPress &&
      listKey(static_cast<const QKeyEvent&>(*event))) {
    return true;
  }
  return QMainWindow::eventFilter(watched, event);
}

int ConverterWindow::currentRow() const {
  return list_->currentIndex().isValid() ? list_->currentIndex().row() : -1;
}

// A window that is minimised still answers.
void ConverterWindow::showTitle() {
  const auto amount = field_->amount();
  if (!amount || lines_->rowCount() == 0) return setWindowTitle(QStringLiteral("Fexora"));
  QString title =
      leftToRight(QStringLiteral("%1 %2 = %3")
                      .arg(exactText(*amount), codeOf(*lines_->source()), lines_->lineText(0)));
  if (past_->day()) title += " · " + inWords(*past_->day(), desk_.now(), languageLocale());
  setWindowTitle(title);
}

void ConverterWindow::showProblem() {
  const bool isLost = !desk_.store.saveProblem().empty();
  const bool isUnread = !desk_.store.loadProblem().empty();
  caption_->setStoreProblem(isLost     ? tr("Nothing new is kept: the store cannot be written.")
                            : isUnread ? tr("The store could not be read; it is left as it is.")
                                       : QString());
}

void ConverterWindow::take(const QStringList& words) {
  std::vector<std::string> texts;
  for (const QString& word : words) texts.push_back(word.toStdString());
  const AmountReading reading = readTyped(toQt(program::sentenceOf(texts)));
  notice_->tell(reading.problem);
  if (reading.hasAmount()) {
    if (reading.day) showDay(*reading.day);
    field_->type(reading.amountText);
    lines_->add(reading.destinations);
  }
  field_->focusAndSelect();
}

// What was asked for in the field joins the list when it is accepted, not while it is typed.
void ConverterWindow::accept() {
  const auto destinations = field_->reading().destinations;
  if (!destinations.empty()) lines_->add(destinations);
  if (field_->reading().day) {
    // The text has done its work; what follows is of that day, too.
    isDayTyped_ = false;
    field_->setAmount(*field_->amount());
  }
  save();
}

void ConverterWindow::activate() {
  show();
  setWindowState(windowState() & ~Qt::WindowMinimized);
  raise();
  activateWindow();
}

void ConverterWindow::closeEvent(QCloseEvent* event) {
  QSettings().setValue(geometryKey(), saveGeometry());
  save();
  const std::string problem = isKept_ ? std::string() : desk_.store.saveProblem();
  // The caption says it; whoever closes the window again means it.
  const bool isAsked = problem.empty() || std::exchange(isLossTold_, true) || isEndingBySignal();
  if (!isAsked) return event->ignore();
  if (!problem.empty()) qWarning("the last amount is not kept: %s", problem.c_str());
  event->accept();
}

}  // namespace fexora::desktop
