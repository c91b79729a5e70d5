// The windows and their parts: each case is a process of its own, with a store in a folder that
// goes.
#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusVariant>
#include <QDir>
#include <QFile>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QProcess>
#include <QPushButton>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>
#include <QToolTip>

#include "fexora/platform/files/ReadOnlyFiles.h"

#include "programs/converter/ConverterWindow.h"
#include "programs/desktop/AmountField.h"
#include "programs/desktop/Appearance.h"
#include "programs/desktop/CurrencyPicker.h"
#include "programs/desktop/DayBar.h"
#include "programs/desktop/FirstPaint.h"
#include "programs/desktop/FreshnessCaption.h"
#include "programs/desktop/FreshnessText.h"
#include "programs/desktop/HistoryThread.h"
#include "programs/desktop/Languages.h"
#include "programs/desktop/LinesFilter.h"
#include "programs/desktop/LinesModel.h"
#include "programs/desktop/NoticeBar.h"
#include "programs/desktop/OpenLine.h"
#include "programs/desktop/PastImport.h"
#include "programs/desktop/PickerModel.h"
#include "programs/desktop/PlotPanel.h"
#include "programs/desktop/Portal.h"
#include "programs/desktop/ProblemText.h"
#include "programs/desktop/QtText.h"
#include "programs/desktop/RatePlot.h"
#include "programs/desktop/Refresher.h"
#include "programs/desktop/SettingsPage.h"
#include "programs/desktop/Style.h"
#include "programs/desktop/TextLine.h"
#include "programs/desktop/TodayModel.h"
#include "programs/desktop/Trends.h"
#include "programs/desktop/WindowProgram.h"
#include "programs/shared/RatesText.h"
#include "programs/today/TodayWindow.h"

namespace fexora::desktop {
namespace {

// Keeps the request until the test answers it.
class HeldTransport final : public Transport {
 public:
  void get(const std::string& address, Reader read, Completion complete) override {
    follow(address, read, std::move(complete), nullptr);
  }
  void follow(const std::string& /*address*/, Reader /*read*/, Completion complete,
              const std::shared_ptr<Transfer>& with) override {
    held = std::move(complete);
    transfer = with;
  }
  Completion held;
  std::shared_ptr<Transfer> transfer;
};

HeldTransport transport;

Desk openDesk() {
  Platform::process().transport = &transport;
  return Desk::process();
}

QString storeFile() {
  return qEnvironmentVariable("FEXORA_CONTAINER") + "/Store.plist";
}

QString pastFolder() {
  return qEnvironmentVariable("FEXORA_CONTAINER") + "/.fexora-history";
}

// Of each source of past rates how many days are kept.
QString keptDays(HistoryThread& history) {
  QString days;
  bool isTold = false;
  history.ask(
      &history, [](RateHistory& rates) { return rates.summary(); },
      [&](const HistorySummary& kept) {
        for (const auto& line : kept.sources) {
          days += ' ' + toQt(line.source) + ' ' + QString::number(line.tables);
        }
        isTold = true;
      });
  return QTest::qWaitFor([&] { return isTold; }) ? days.trimmed() : QString();
}

QByteArray storeBytes() {
  QFile file(storeFile());
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// What the bundled rates make of an amount, by themselves.
double bundled(double amount, std::string_view from, std::string_view to) {
  double source = 1;
  double target = 1;
  for (const USDRateRef& rate : bundledUSDRates()) {
    if (rate->code() == from) source = rate->rate().doubleValue();
    if (rate->code() == to) target = rate->rate().doubleValue();
  }
  return amount * (target / source);
}

QString shown(double value, int digits) {
  return toQt(NumberFormat(digits, true).amount(value));
}

// The labels that are seen.
QStringList texts(const QWidget& window) {
  QStringList all;
  for (const auto* label : window.findChildren<QLabel*>()) {
    if (!label->isHidden()) all << label->text();
  }
  return all;
}

QString cell(LinesModel& lines, int row, LinesModel::Role role) {
  return lines.index(row).data(role).toString();
}

}  // namespace

class DesktopTest final : public QObject {
  Q_OBJECT

 public:
  DesktopTest() {
    select({"EUR", "GBP", "JPY"});
    desk_.store.saveSourceCurrency(known("USD"), 100, true);
  }

 private:
  CurrencyRef known(const char* code) const { return desk_.catalogue.currencyForCode(code); }
  void select(std::initializer_list<const char*> codes) {
    std::vector<CurrencyRef> list;
    for (const char* code : codes) list.push_back(known(code));
    desk_.store.saveCurrencies(list);
  }
  QString order() const {
    QStringList codes;
    for (const auto& each : desk_.store.loadCurrencies()) codes << codeOf(*each);
    return codes.join(' ');
  }
  static void open(ConverterWindow& window) {
    window.activate();
    QVERIFY(QTest::qWaitForWindowActive(&window));
  }
  // What the store's file holds now: "88.5 EUR".
  QString kept() const {
    desk_.store.loadData();
    const auto last = desk_.store.loadSourceCurrency();
    return plainNumber(last->amount().doubleValue()) + ' ' + codeOf(*last->currency());
  }
  void runProgram(const QStringList& words) const {
    QCOMPARE(QProcess::execute(QApplication::applicationDirPath() + "/fexora", words), 0);
  }

  Desk desk_ = openDesk();
  Appearance appearance_{desk_};

 private slots:
  void readsWhatIsTyped();
  void readsTheTableOfSentences();
  void doesTheRestOnceItIsPainted();
  void convertsEachKeyAndSavesOnce();
  void keepsWhatIsShown();
  void takesTheCurrencyAndTheOtherReading();
  void editsTheList();
  void makesALineTheSource();
  void showsWhatIsTooLongForALine();
  void picksCurrencies();
  void saysHowOldRatesAre();
  void refreshesStopsAndSaysWhy();
  void saysInWordsWhatIsWrong();
  void followsTheOtherProcess();
  void savesSettingsAtOnce();
  void opensALineToItsPlot();
  void showsAPastDay();
  void showsTodayInBothModes();
  void speaksEachLanguage();
  void staysUpWithoutAStore();
  void takesNoTextForMarkup();
  void takesAnAccentThatCanBeRead();
  void followsTheDesktop();
};

void DesktopTest::readsWhatIsTyped() {
  using Kind = AmountReading::Kind;
  struct Row {
    const char* text;
    Kind kind;
    double value;
    double other;  // 0: none
    const char* currency;
  };
  for (const Row& row : std::initializer_list<Row>{{"1,234", Kind::number, 1234, 1.234, ""},
                                                   {"-1.5", Kind::number, -1.5, 0, ""},
                                                   {"5 €", Kind::number, 5, 0, "EUR"},
                                                   {"12+3×2", Kind::calculation, 18, 0, ""},
                                                   {"1,234+1", Kind::calculation, 1235, 2.234, ""},
                                                   {"12+", Kind::calculation, 12, 0, ""},
                                                   {"(12+3", Kind::refused, 0, 0, ""},
                                                   {"1/0", Kind::refused, 0, 0, ""},
                                                   {"12x", Kind::refused, 0, 0, ""},
                                                   {"  ", Kind::empty, 0, 0, ""}}) {
    const AmountReading read = readTyped(QString::fromUtf8(row.text));
    QCOMPARE(read.kind, row.kind);
    QCOMPARE(read.value, row.value);
    QCOMPARE(read.other.value_or(0), row.other);
    QCOMPARE(read.currency, row.currency);
    QCOMPARE(read.problem.isEmpty(), row.kind != Kind::refused);
  }
}

void DesktopTest::readsTheTableOfSentences() {
  QFile table(QT_TESTCASE_SOURCEDIR "/../sentences/sentences.tsv");
  QVERIFY(table.open(QIODevice::ReadOnly));
  for (QString line; !(line = QString::fromUtf8(table.readLine())).isEmpty();) {
    const QStringList cells = line.trimmed().split('\t');
    if (line.startsWith('#')) continue;
    Locale::setCurrent(cells[0].toStdString());
    const AmountReading read = readTyped(cells[1]);
    QVERIFY2(read.hasAmount() == (cells[2] != "!"), qUtf8Printable(line + read.problem));
    if (!read.hasAmount()) continue;
    const QStringList numbers = cells[2].split('|');
    QVERIFY2(std::fabs(read.value / numbers.first().toDouble() - 1) < 1e-12, qUtf8Printable(line));
    QCOMPARE(read.other.value_or(0), numbers.value(1, "0").toDouble());
    QStringList destinations;
    for (const CurrencyRef& each : read.destinations) destinations << codeOf(*each);
    QCOMPARE(toQt(read.currency.empty() ? "-" : read.currency), cells[3]);
    QCOMPARE(destinations.isEmpty() ? "-" : destinations.join(' '), cells[4]);
  }
  Locale::setCurrent("en_US");
}

void DesktopTest::doesTheRestOnceItIsPainted() {
  QWidget window;
  int times = 0;
  onceItIsPainted(window, [&] { ++times; });
  QCoreApplication::processEvents();
  QCOMPARE(times, 0);
  for (int painted = 0; painted < 2; ++painted) {
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTRY_COMPARE(times, 1);
    window.hide();
  }
}

void DesktopTest::convertsEachKeyAndSavesOnce() {
  ConverterWindow window(desk_, appearance_);
  open(window);
  QLineEdit& entry = window.field().entry();
  QCOMPARE(entry.selectedText(), "100");
  const QByteArray before = storeBytes();
  QTest::keyClicks(&entry, "12.5");
  QCOMPARE(cell(window.lines(), 2, LinesModel::amountRole), shown(bundled(12.5, "USD", "JPY"), 3));
  QCOMPARE(window.lines().index(0).data(Qt::AccessibleTextRole).toString(),
           "Euro, " + cell(window.lines(), 0, LinesModel::amountRole));
  QCOMPARE(storeBytes(), before);
  QTRY_VERIFY(storeBytes() != before);
  // One's own save comes back as another's, and does not touch what is typed.
  QTest::keyClicks(&entry, "0");
  desk_.store.folderUpdate();
  QCOMPARE(entry.text(), "12.50");
  QTest::keyClicks(&entry, "x");
  QCOMPARE(cell(window.lines(), 0, LinesModel::amountRole), "–");
}

void DesktopTest::keepsWhatIsShown() {
  using Action = std::function<void(ConverterWindow&)>;
  const Action other = [](auto& window) {
    window.field().type("1,234");
    QTest::keyClick(&window.field().entry(), Qt::Key_Return);
    QTest::keyClick(&window, Qt::Key_R, Qt::AltModifier);
  };
  const Action swap = [](auto& window) {
    QTest::keyClick(&window, Qt::Key_I, Qt::ControlModifier);
  };
  const Action revert = [](auto& window) {
    window.field().type("5x");
    QTest::keyClick(&window.field().entry(), Qt::Key_Escape);
  };
  for (const Action& action : {other, swap, revert}) {
    ConverterWindow window(desk_, appearance_);
    open(window);
    window.field().type("7");
    action(window);
    const QString shown =
        plainNumber(*window.field().amount()) + ' ' + codeOf(*window.lines().source());
    window.close();
    QCOMPARE(kept(), shown);
  }
  // Where nothing can be written that is said, whatever else is; the last save makes up for it.
  const QString lost = "Nothing new is kept: the store cannot be written.";
  ReadOnlyFiles refusing;
  ConverterWindow window(desk_, appearance_);
  Files* const usual = std::exchange(desk_.platform.files, &refusing);
  window.refresher().start();
  transport.held({}, ResponseError{ResponseError::Kind::timeOut, "", "", 0});
  window.field().type("555");
  QTRY_VERIFY(texts(window).contains(lost));
  QVERIFY(texts(window).contains(window.refresher().problem()));
  // Once, since whoever closes it again means it.
  QVERIFY(!window.close());
  desk_.platform.files = usual;
  const QString source = codeOf(*window.lines().source());
  window.close();
  QVERIFY(!texts(window).contains(lost));
  QCOMPARE(kept(), "555 " + source);
}

void DesktopTest::takesTheCurrencyAndTheOtherReading() {
  ConverterWindow window(desk_, appearance_);
  open(window);
  QLineEdit& entry = window.field().entry();
  QTest::keyClicks(&entry, "1,234");
  QCOMPARE(*window.field().amount(), 1234.0);
  QTest::keyClick(&window, Qt::Key_R, Qt::AltModifier);
  QCOMPARE(*window.field().amount(), 1.234);
  QCOMPARE(desk_.store.loadSourceCurrency()->amount().doubleValue(), 1.234);
  QTest::keyClicks(&entry, "*2");
  QCOMPARE(*window.field().amount(), 2468.0);
  QTest::keyClick(&window, Qt::Key_R, Qt::AltModifier);
  QCOMPARE(*window.field().amount(), 2.468);
  entry.selectAll();
  QTest::keyClicks(&entry, "£7");
  QCOMPARE(window.lines().source()->code(), "GBP");
  QCOMPARE(window.field().sourceButton().text(), "GBP");
  // What was converted from has become a line, in the place of what is now.
  QCOMPARE(order(), "EUR USD GBP JPY");
  QCOMPARE(cell(window.lines(), 1, LinesModel::amountRole), shown(bundled(7, "GBP", "USD"), 3));
}

void DesktopTest::editsTheList() {
  ConverterWindow window(desk_, appearance_);
  open(window);
  QListView& list = window.list();
  QTest::keyClick(&window.field().entry(), Qt::Key_Down);
  QVERIFY(list.hasFocus());
  QTest::keyClick(&list, Qt::Key_Down, Qt::AltModifier);
  QCOMPARE(order(), "GBP EUR JPY");
  QCOMPARE(list.currentIndex().row(), 1);
  QTest::keyClick(&list, Qt::Key_Delete);
  QCOMPARE(order(), "GBP JPY");
  QVERIFY(!window.notice().text().isEmpty());
  QTest::keyClick(&list, Qt::Key_Z, Qt::ControlModifier);
  QCOMPARE(order(), "GBP EUR JPY");
  QVERIFY(window.lines().moveRows({}, 2, 1, {}, 0));
  QCOMPARE(order(), "JPY GBP EUR");
  // What a store may hold: a code twice, in any case, and one that nobody knows.
  desk_.store.saveCurrencies({known("JPY"), Currency::make("gbp"), known("GBP"), known("EUR"),
                              known("JPY"), Currency::make("QQQ")});
  window.lines().reload();
  QCOMPARE(window.lines().rowCount(), 4);
  window.lines().remove(3);
  window.lines().add({known("GBP"), known("CHF")});
  QCOMPARE(order(), "JPY GBP EUR CHF");
  desk_.store.saveSourceCurrency(Currency::make("QQQ"), 5, true);
  QCOMPARE(ConverterWindow(desk_, appearance_).field().sourceButton().text(), "QQQ");
  QCOMPARE(TodayModel(desk_).heading(), "5 QQQ");
  QTest::keyClicks(&list, "5");
  QCOMPARE(window.field().entry().text(), "5");

  auto& filter = *window.findChild<LinesFilter*>();
  QVERIFY(filter.isHidden());
  window.lines().add(desk_.catalogue.currencies());
  QVERIFY(filter.isVisible());
  list.setCurrentIndex(window.lines().index(0));
  QTest::keyClick(&window, Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
  QVERIFY(!filter.entry().isClearButtonEnabled());
  QTest::keyClicks(&filter.entry(), "swiss");
  QVERIFY(filter.entry().isClearButtonEnabled());
  QVERIFY(!list.currentIndex().isValid());  // JPY
  QTest::keyClick(&filter.entry(), Qt::Key_Return);
  QCOMPARE(codeOf(*window.lines().currencyAt(list.currentIndex().row())), "CHF");
  QTest::keyClick(&filter.entry(), Qt::Key_Escape);
  QVERIFY(!list.isRowHidden(0));
}

void DesktopTest::makesALineTheSource() {
  ConverterWindow window(desk_, appearance_);
  open(window);
  QListView& list = window.list();
  list.setCurrentIndex(window.lines().index(0));
  QTest::keyClick(&list, Qt::Key_C, Qt::ControlModifier);
  QCOMPARE(readTyped(QApplication::clipboard()->text()).value, bundled(100, "USD", "EUR"));
  QTest::keyClick(&list, Qt::Key_Return);
  QCOMPARE(window.lines().source()->code(), "EUR");
  QCOMPARE(*window.field().amount(), bundled(100, "USD", "EUR"));
  QCOMPARE(cell(window.lines(), 0, LinesModel::codeRole), "USD");
  QCOMPARE(cell(window.lines(), 0, LinesModel::amountRole), "100.000");
  window.take({"7", "yen", "xyzzy", "CHF"});
  QVERIFY(window.notice().text().contains("xyzzy"));
  QCOMPARE(window.lines().source()->code(), "EUR");
  window.take({"7", "yen", "in", "CHF"});
  QVERIFY(window.notice().text().isEmpty());
  QCOMPARE(window.lines().source()->code(), "JPY");
  QVERIFY(order().endsWith("CHF"));
  QCOMPARE(window.field().entry().text(), "7 yen");
  // What is asked for in the field joins the list with Return.
  window.field().type("100 gbp in kwd");
  QVERIFY(!order().contains("KWD"));
  QTest::keyClick(&window.field().entry(), Qt::Key_Return);
  QVERIFY(order().endsWith("KWD"));
}

void DesktopTest::showsWhatIsTooLongForALine() {
  const auto power = [](double value, const char* exponent) {
    return QString::number(value, 'e', 3).section('e', 0, 0) + "×10" + exponent;
  };
  ConverterWindow window(desk_, appearance_);
  LinesModel& lines = window.lines();
  window.field().type("1e308");
  QCOMPARE(cell(lines, 0, LinesModel::amountRole), power(bundled(1e308, "USD", "EUR"), "³⁰⁷"));
  QCOMPARE(cell(lines, 0, LinesModel::numberRole), plainNumber(bundled(1e308, "USD", "EUR")));
  QCOMPARE(cell(lines, 2, LinesModel::amountRole), "∞");
  QCOMPARE(cell(lines, 2, LinesModel::rateRole), "too large a number");
  QCOMPARE(cell(lines, 2, LinesModel::numberRole), "");
  QCOMPARE(window.windowTitle().section(' ', 0, 0), "1×10³⁰⁸");
  desk_.store.synchronize();
  QCOMPARE(TodayModel(desk_).heading(), "1×10³⁰⁸ USD");
  window.field().type("-1e-30");
  QCOMPARE(cell(lines, 2, LinesModel::amountRole), power(bundled(-1e-30, "USD", "JPY"), "⁻²⁸"));
  // Of a line that has no number only the currency can be taken.
  window.field().type("1e308");
  window.list().setCurrentIndex(lines.index(2));
  QTest::keyClick(&window.list(), Qt::Key_Return);
  QCOMPARE(lines.source()->code(), "JPY");
  QCOMPARE(*window.field().amount(), 1e308);
}

void DesktopTest::picksCurrencies() {
  CurrencyPicker picker(desk_, CurrencyPicker::Takes::several);
  picker.setFirst({known("JPY")});
  QCOMPARE(picker.taken().front()->code(), "JPY");
  QTest::keyClicks(&picker.entry(), "switz");
  QCOMPARE(picker.taken().front()->code(), "CHF");
  QTest::keyClick(&picker.entry(), Qt::Key_Return, Qt::ControlModifier);
  picker.entry().clear();
  QTest::keyClicks(&picker.entry(), "DEM");
  QVERIFY(picker.model().index(0).data(PickerModel::nameRole).toString().endsWith("by EUR"));
  // The rest by mouse.
  picker.show();
  auto& list = *picker.findChild<QListView*>();
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                    list.visualRect(list.currentIndex()).center());
  QCOMPARE(picker.findChildren<QPushButton*>().last()->text(), "Add (2)");
  QTest::mouseClick(picker.findChildren<QPushButton*>().last(), Qt::LeftButton);
  QCOMPARE(picker.result(), static_cast<int>(QDialog::Accepted));
  QCOMPARE(picker.taken().size(), 2U);
  QCOMPARE(picker.taken().back()->code(), "DEM");
}

void DesktopTest::saysHowOldRatesAre() {
  struct Row {
    const char* zone;
    const char* published;  // null: no rates
    const char* now;
    const char* words;
    const char* inTerminal;
  };
  const char* const noon = "2026-11-25T12:00:00Z";
  for (const Row& row : {
           Row{"UTC", nullptr, noon, "No rates yet", nullptr},
           Row{"UTC", "2026-09-29T12:00:00Z", noon, "29 September, A bank, 57 days old",
               "29 September"},
           Row{"UTC", "2025-10-21T12:00:00Z", noon, "21 October 2025, A bank, 400 days old",
               nullptr},
           Row{"UTC", "2026-11-25T11:00:00Z", noon, "today, 11:00, A bank", "25 November"},
           // A day is that day everywhere; a moment is in the zone's own.
           Row{"America/New_York", "2026-11-24T00:00:00Z", noon, "24 November, A bank, 1 day old",
               "24 November"},
           Row{"America/New_York", "2026-11-24T00:00:01Z", noon, "23 November, A bank, 1 day old",
               "23 November"},
           Row{"Asia/Tokyo", "2026-11-25T00:00:00Z", noon, "today, A bank", "25 November"},
           Row{"Asia/Tokyo", "2026-11-24T23:30:00Z", noon, "today, 08:30, A bank", "25 November"},
       }) {
    qputenv("TZ", row.zone);
    Freshness freshness;
    const Date now = *Date::fromIsoText(row.now);
    if (row.published != nullptr) {
      freshness.published = Date::fromIsoText(row.published);
      freshness.origin = Freshness::Origin::service;
      freshness.source = "A\nbank";
      const bool isFresh = now.secondsSince1970() - freshness.published->secondsSince1970() < 86400;
      freshness.state = isFresh ? Freshness::State::fresh : Freshness::State::old;
    }
    const QString words = QString(row.published != nullptr ? "Rates of " : "") + row.words;
    QCOMPARE(inWords(freshness, now, QLocale("en_GB")).whole(), words);
    if (row.inTerminal == nullptr) continue;
    QVERIFY(
        QString::fromStdString(program::dayText(*freshness.published)).startsWith(row.inTerminal));
  }
}

void DesktopTest::refreshesStopsAndSaysWhy() {
  desk_.store.setRatesFrom("service");
  HistoryThread history(desk_);
  Refresher refresher(desk_, history);
  const FreshnessCaption caption(desk_, refresher);
  auto answer = std::make_shared<Response>();
  answer->setUpdated(desk_.now().secondsSince1970());
  answer->setServiceMessage("Closed tomorrow");
  answer->setRates(bundledUSDRates());
  QFile(pastFolder()).open(QIODevice::WriteOnly);
  refresher.start();
  QVERIFY(refresher.isRunning());
  transport.held({}, ResponseError{ResponseError::Kind::timeOut, "", "", 0});
  QCOMPARE(refresher.problem(), "The rates service took too long to answer.");
  refresher.start();
  QVERIFY(refresher.problem().isEmpty());
  QVERIFY(!texts(caption).contains("Refreshing… 12 KB"));
  transport.transfer->counts()->set((11U << 10) + 1, 0);
  transport.transfer->tell();
  QVERIFY(texts(caption).contains("Refreshing… 12 KB"));
  transport.transfer->counts()->set(12U << 10, 48U << 10);
  transport.transfer->tell();
  QVERIFY(texts(caption).contains("Refreshing… 12 of 48 KB"));
  refresher.stop();
  QVERIFY(transport.transfer->isCancelled());
  QVERIFY(!texts(caption).contains("Refreshing… 12 of 48 KB"));
  transport.held(answer, {});
  QVERIFY(hasBundledRates(desk_.store));
  refresher.start();
  transport.held(answer, {});
  QVERIFY(!refresher.isRunning());
  QCOMPARE(desk_.rates.freshness().state, Freshness::State::fresh);
  QCOMPARE(desk_.rates.serviceMessage(), "Closed tomorrow");
  // What cannot be kept for later is a line, and the rates are in; what can is there.
  QTRY_VERIFY(refresher.problem().startsWith("The rates are not kept for later: "));
  QVERIFY(QFile::remove(pastFolder()));
  refresher.start();
  QVERIFY(refresher.problem().isEmpty());
  transport.held(answer, {});
  QTRY_COMPARE(keptDays(history), "bundled 1 service 1");
  // By itself only where the rates are stale.
  transport.held = {};
  refresher.startByItself();
  QVERIFY(transport.held == nullptr);
}

// What the library says in English, figures and all.
void DesktopTest::saysInWordsWhatIsWrong() {
  using Kind = ResponseError::Kind;
  Locale::setCurrent("de_DE");
  applyLanguage();
  QCOMPARE(inWords(ResponseError{Kind::httpStatus, "", "", 503}),
           "Der Kursdienst hat gerade keine Kurse (503).");
  const Date day(1'790'640'000);  // 29 September 2026
  const HeldRates held{{USDRate::make(1, "USD"), USDRate::make(0.5, "EUR")}, day, day, {}, {}};
  struct Row {
    std::vector<USDRateRef> rates;
    double days;  // after the held ones
    const char* words;
  };
  const auto rate = [](double value, const char* code) { return USDRate::make(value, code); };
  for (const Row& row : {
           Row{{}, 0, "es sind keine da"},
           Row{{rate(-1.5, "EUR")}, 0, "der Kurs von EUR ist -1,5"},
           Row{{rate(0.5, "EUR"), rate(150, "JPY")}, 0, "der US-Dollar fehlt"},
           Row{{rate(1.25, "USD")}, 0, "ein US-Dollar ist 1,25 US-Dollar"},
           Row{{rate(1.25, "USD"), rate(1, "EUR")}, 0, "sie gelten je EUR, nicht je US-Dollar"},
           Row{{rate(1, "USD"), rate(0.5, "EUR"), rate(0.6, "EUR")},
               0,
               "EUR kommt zweimal vor, mit 0,5 und mit 0,6"},
           Row{{rate(1, "USD"), rate(1.5, "EUR")}, 0, "EUR ging von 0,5 auf 1,5"},
           Row{held.rates, 9, "sie sind aus der Zukunft, vom 8. Oktober 2026"},
           Row{held.rates, -9,
               "sie sind vom 20. September 2026, älter als die vom 29. September 2026"},
       }) {
    Response answer;
    answer.setRates(row.rates);
    answer.setUpdated(day.secondsSince1970() + row.days * 86400);
    const AnswerVerdict verdict = plausible()(answer, held);
    QVERIFY(verdict.against.has_value());
    QCOMPARE(inWords({program::RatesProblem::Cause::refused, {}}, verdict),
             "Die neuen Kurse sehen falsch aus und wurden nicht übernommen: " +
                 QString::fromUtf8(row.words) + '.');
  }
  QCOMPARE(inWords(RatesReason{RatesReason::Kind::other, {}, 0, 0, "of a host's own"}),
           "of a host's own");
}

void DesktopTest::followsTheOtherProcess() {
  ConverterWindow converter(desk_, appearance_);
  TodayWindow today(desk_, appearance_);
  open(converter);
  QTest::keyClicks(&converter.field().entry(), "77");
  desk_.store.synchronize();
  QTRY_VERIFY(!desk_.store.skipUpdate());
  runProgram({"250", "CHF", "EUR"});
  QTRY_COMPARE(today.lines().source().code(), "CHF");
  QVERIFY(today.lines().heading().contains("250"));
  QCOMPARE(converter.field().entry().text(), "77");
  runProgram({"settings", "mode", "dark"});
  runProgram({"settings", "fraction", "1"});
  QTRY_COMPARE(desk_.store.fraction(), 1);
  QVERIFY(QApplication::palette().color(QPalette::Window).lightness() < 128);
  QCOMPARE(cell(converter.lines(), 0, LinesModel::amountRole), shown(bundled(77, "USD", "EUR"), 1));
}

void DesktopTest::savesSettingsAtOnce() {
  SettingsPage page(desk_);
  int changes = 0;
  connect(&page, &SettingsPage::changed, this, [&] { ++changes; });
  page.reload();
  QCOMPARE(changes, 0);
  for (auto* const box : page.findChildren<QSpinBox*>()) box->setValue(box->maximum());
  QCOMPARE(desk_.store.fraction(), Settings::kMostFraction);
  QCOMPARE(desk_.store.numberOfCurrenciesInWidget(), Settings::kMostNumberOfCurrencies);
  QCOMPARE(changes, 2);
  for (auto* const box : page.findChildren<QComboBox*>()) box->setCurrentIndex(box->count() - 1);
  QCOMPARE(desk_.store.ratesFrom(), "nowhere");
  QVERIFY(!desk_.store.todayTrend());
  page.findChildren<QCheckBox*>().at(1)->click();
  QVERIFY(desk_.store.todayTrend());
  QVERIFY(program::FreshRates(desk_.rates, desk_.store).steps().empty());
  const QByteArray kept = storeBytes();
  page.reload();
  QCOMPARE(storeBytes(), kept);
}

void DesktopTest::opensALineToItsPlot() {
  ConverterWindow window(desk_, appearance_);
  open(window);
  OpenLine& line = window.openLine();
  QListView& list = window.list();
  QTest::keyClick(&window.field().entry(), Qt::Key_Down);
  QTest::keyClick(&list, Qt::Key_Right);
  QTRY_VERIFY(line.panel()->isAnswered());
  QVERIFY(texts(*line.panel()).contains("No past rates of this pair are known."));
  // What is stopped brings nothing; what comes fills the plot.
  QString days;  // euros in dollars, of each day 1 / (1 + 0.01 × its number)
  for (int i = 1; i <= 40; ++i) {
    const QString day = QDate(2026, 1, 1).addDays(i < 40 ? i : 60).toString(Qt::ISODate);
    days += QString("<Cube time='%1'><Cube currency='USD' rate='%2'/></Cube>")
                .arg(day)
                .arg(1 + 0.01 * (i == 20 ? 90 : i), 0, 'f', 2);
  }
  const auto answer =
      std::make_shared<TextAnswer>(("<E><Cube>" + days + "</Cube></E>").toStdString());
  QTest::keyClick(line.panel()->focusWidget(), Qt::Key_Space);
  QVERIFY(line.import().isRunning());
  line.import().stop();
  transport.held(answer, {});
  line.import().start();
  transport.held(answer, {});
  QTRY_VERIFY(line.panel()->hasRates());
  QVERIFY(line.import().problem().isEmpty() && !line.import().isRunning());
  RatePlot& plot = line.panel()->plot();
  QVERIFY(plot.hasFocus());
  int digits = 4;  // that tell two hundred steps of the range apart
  const auto said = [&](double dollars, const char* day) {
    return QString::number(1 / dollars, 'f', digits) + ", " + day;
  };
  // Thirty days back from the last.
  QCOMPARE(plot.accessibleDescription(), QString("first %1; lowest %2; highest %1; last %2")
                                             .arg(said(1.30, "31 January"), said(1.40, "2 March")));
  line.panel()->findChild<QButtonGroup*>()->button(3)->click();
  digits = 3;
  QCOMPARE(plot.accessibleDescription(),
           QString("first %1; lowest %2; highest %1; last %3")
               .arg(said(1.01, "2 January"), said(1.90, "21 January"), said(1.40, "2 March")));
  QTest::keyClick(&plot, Qt::Key_Home);
  QTest::keyClick(&plot, Qt::Key_Right);
  QCOMPARE(plot.accessibleName(), QString::number(1 / 1.02, 'f', 3) + " EUR, Sat 3 January 2026");
  // The pair follows the source; what becomes the source is no line any more.
  QTest::keyClick(&plot, Qt::Key_Escape);
  QVERIFY(!line.isOpen() && list.hasFocus());
  line.open(1);
  QTRY_VERIFY(line.panel()->isAnswered());
  QVERIFY(!line.panel()->hasRates());
  QTest::keyClick(&list, Qt::Key_Delete);
  QTRY_VERIFY(!line.isOpen());
}

void DesktopTest::showsAPastDay() {
  ConverterWindow window(desk_, appearance_);
  open(window);
  LinesModel& lines = window.lines();
  const auto day = [](int number) { return Day(std::chrono::year(2024) / 3 / number); };
  const auto history = rateHistory(desk_.store.applicationDocumentsDirectory(),
                                   *desk_.platform.files, *desk_.platform.log);
  const std::vector<PublishedTable> tables = {
      {day(1), "ecb", "EUR", {{"USD", "1.0813"}, {"GBP", "0.85635"}}},
      {Day(std::chrono::year(2024) / 2 / 29), "ecb", "EUR", {{"USD", "1.0826"}, {"JPY", "162.4"}}}};
  QVERIFY(history->keep(tables, desk_.now().secondsSince1970()).problem.empty());
  // The sentence names it; each line says of which day it is; nothing of it is kept.
  QTest::keyClicks(&window.field().entry(), "5 usd in eur on 1 march 2024");
  QTRY_COMPARE(cell(lines, 0, LinesModel::amountRole), shown(5 / 1.0813, 3));
  QCOMPARE(window.dayBar().text(), "At the rates of 1 March 2024, European Central Bank");
  QCOMPARE(cell(lines, 0, LinesModel::originRole), "");
  QVERIFY(lines.index(0).data(Qt::ToolTipRole).toString().endsWith("as printed"));
  QCOMPARE(cell(lines, 2, LinesModel::amountRole), shown(5 / 1.0826 * 162.4, 3));
  QCOMPARE(cell(lines, 2, LinesModel::originRole), "rate of 29 February 2024");
  QVERIFY(window.windowTitle().endsWith(" · 1 March 2024"));
  QTest::keyClick(&window.field().entry(), Qt::Key_Return);
  QTest::keyClicks(&window.field().entry(), "7");
  QCOMPARE(cell(lines, 1, LinesModel::amountRole), shown(7 / 1.0813 * 0.85635, 3));
  QTest::keyClick(&window.field().entry(), Qt::Key_Escape);
  QCOMPARE(window.dayBar().text(), "");
  QCOMPARE(cell(lines, 0, LinesModel::amountRole), shown(bundled(100, "USD", "EUR"), 3));
  window.close();
  QCOMPARE(kept(), "100 USD");
  // Where there is none, lines say so, and the past is offered.
  window.showDay(day(20));
  QTRY_COMPARE(cell(lines, 0, LinesModel::rateRole), "no rate for that day");
  QCOMPARE(window.notice().text(), "No rates for that day are kept.");
  QCOMPARE(readTyped("5 usd on 1 march 2199").problem, "That day is yet to come");
}

void DesktopTest::showsTodayInBothModes() {
  desk_.store.setNumberOfCurrenciesInWidget(2);
  TodayModel lines(desk_);
  const auto text = [&](int row, TodayModel::Role role) {
    return lines.index(row).data(role).toString();
  };
  QCOMPARE(lines.rowCount(), 2);
  QCOMPARE(text(0, TodayModel::labelRole), "Euro");
  QCOMPARE(text(0, TodayModel::valueRole), shown(bundled(100, "USD", "EUR"), 3));
  desk_.store.setTodayCurrencies({known("CHF"), known("EUR"), known("DEM")});
  desk_.store.setNamingInWidget(Naming::codes);
  desk_.store.setTodayConversionMode(TodayConversionMode::rate);
  desk_.store.setTodayRelativeCurrency(known("EUR"));
  lines.reload();
  QCOMPARE(lines.rowCount(), 2);
  QCOMPARE(text(1, TodayModel::labelRole), "DEM");
  QCOMPARE(text(1, TodayModel::valueRole), "1.95583");
  QCOMPARE(text(0, TodayModel::valueRole),
           toQt(NumberFormat(3, true).rate(bundled(1, "EUR", "CHF"))));
  lines.turn();
  QCOMPARE(text(1, TodayModel::valueRole), toQt(NumberFormat(3, true).rate(1 / 1.95583)));
  // Trends are drawn where they are wanted and known, turned around with the rates.
  HistoryThread history(desk_);
  Trends trends(desk_, history);
  lines.setTrends(trends);
  desk_.store.setTodayTrend(true);
  std::vector<PublishedTable> tables;
  for (const auto& [day, figure] : {std::pair(1, "0.95"), {11, "0.97"}, {21, "0.96"}}) {
    tables.push_back({Day(std::chrono::year(2026) / 3 / day), "ecb", "EUR", {{"CHF", figure}}});
  }
  history.keep(tables, &history, {});
  lines.reload();
  QTRY_VERIFY(lines.index(0).data(TodayModel::trendRole).isValid());
  const auto shape = [&] { return lines.index(0).data(TodayModel::trendRole).value<QPolygonF>(); };
  QCOMPARE(shape(), QPolygonF({{0, 1}, {0.5, 0}, {1, 0.5}}));
  QCOMPARE(lines.index(0).data(Qt::AccessibleDescriptionRole).toString(),
           "in 30 days −" + QString::number((1 - 0.95 / 0.96) * 100, 'f', 2) + " %");
  // A fixed ratio does not move.
  QCOMPARE(lines.index(1).data(TodayModel::trendRole).value<QPolygonF>().first(), QPointF(0, 0.5));
  lines.turn();
  QCOMPARE(shape().first(), QPointF(0, 0));
  // What newer rates lack has a day of its own, here and in the converter.
  const std::vector rates = {USDRate::make(1, "USD"), USDRate::make(0.9, "EUR")};
  QVERIFY(!desk_.rates.takeTables({{rates, desk_.now(), "a bank"}}, false));
  lines.reload();
  QVERIFY(text(0, TodayModel::originRole).startsWith("rate of 29 September"));
  QCOMPARE(text(1, TodayModel::originRole), "");
  desk_.store.saveCurrencies({known("EUR"), known("CHF")});
  LinesModel converter(desk_);
  converter.setAmount(1);
  QCOMPARE(cell(converter, 0, LinesModel::originRole), "");
  QCOMPARE(cell(converter, 1, LinesModel::originRole), text(0, TodayModel::originRole));
}

void DesktopTest::speaksEachLanguage() {
  Freshness freshness;
  freshness.origin = Freshness::Origin::bundled;
  freshness.state = Freshness::State::old;
  freshness.published = Date(desk_.now().secondsSince1970() - 3 * 86400.0 - 60);
  for (const QString& file : QDir(":/languages").entryList()) {
    const QString language = file.section('_', 1).section('.', 0, 0);
    Locale::setCurrent(language.toStdString());
    applyLanguage();
    ConverterWindow window(desk_, appearance_);
    const auto buttons = window.findChildren<QPushButton*>();
    const bool isEnglish = std::any_of(buttons.begin(), buttons.end(), [](const auto* button) {
      return button->text() == "Refresh";
    });
    QCOMPARE(isEnglish, language == "en");
    const QString age = inWords(freshness, desk_.now(), languageLocale()).age;
    QVERIFY2(age.contains(QLocale(language).toString(3)), qPrintable(age));
    QCOMPARE(age == "3 days old", isEnglish);
    QCOMPARE(window.layoutDirection(), QLocale(language).textDirection());
    QCOMPARE(*window.field().amount(), 100.0);
  }
}

void DesktopTest::staysUpWithoutAStore() {
  runProgram({"--version"});
  QFile::remove(storeFile());
  QFile file(storeFile());
  QVERIFY(file.open(QIODevice::WriteOnly) && file.write("no property list") > 0);
  file.close();
  ConverterWindow window(desk_, appearance_);
  desk_.store.setSkipUpdate(false);
  desk_.store.folderUpdate();
  QCOMPARE(window.lines().rowCount(), 3);
  QVERIFY(texts(TodayWindow(desk_, appearance_)).contains("The store could not be read."));
  window.field().type("8");
  QCOMPARE(cell(window.lines(), 0, LinesModel::amountRole), shown(bundled(8, "USD", "EUR"), 3));
}

// In whatever shows one: a label, a dialog's, and the one that Qt makes for a tooltip.
void DesktopTest::takesNoTextForMarkup() {
  const QString markup = "<img src='/dev/zero'>";
  QLabel label(markup);
  label.show();
  QCOMPARE(label.textFormat(), Qt::PlainText);
  QWidget window;
  window.setToolTip(markup);
  TextLine line(12, TextLine::Tone::text, QFont::Normal, &window);
  line.setWhole(markup);
  for (QWidget* const over : {&window, static_cast<QWidget*>(&line)}) {
    QHelpEvent help(QEvent::ToolTip, {}, {1, 1});
    QApplication::sendEvent(over, &help);
    QCOMPARE(QToolTip::text(), markup);
    for (auto* const tip : QApplication::topLevelWidgets()) {
      if (!tip->inherits("QTipLabel")) continue;
      QCOMPARE(static_cast<QLabel*>(tip)->textFormat(), Qt::PlainText);
      QToolTip::hideText();
    }
  }
}

void DesktopTest::takesAnAccentThatCanBeRead() {
  for (const bool dark : {false, true}) {
    applyTheme(dark);
    const QColor usual = QApplication::palette().color(QPalette::Highlight);
    for (const QColor& accent : {QColor(Qt::yellow), QColor(Qt::white), QColor(Qt::black),
                                 QColor(0x26, 0xA2, 0x69), QColor(0x00, 0x00, 0x80)}) {
      applyTheme(dark, accent);
      const QPalette palette = QApplication::palette();
      const Theme& theme = themeOf(palette);
      QCOMPARE(palette.color(QPalette::Highlight), theme.accent);
      QVERIFY(contrastOf(theme.accent, theme.window) >= 4.5);
      QVERIFY(std::abs(theme.accent.hslHue() - accent.hslHue()) <= 2);
      if (contrastOf(accent, theme.window) >= 4.5) QCOMPARE(theme.accent, accent);
    }
    applyTheme(dark);
    QCOMPARE(QApplication::palette().color(QPalette::Highlight), usual);
  }
}

// With a portal of the test's own on a bus that dbus-run-session gives it.
void DesktopTest::followsTheDesktop() {
  if (!hasSessionBus()) QSKIP("there is no session bus");
  auto portal = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "portal");
  QVERIFY(portal.registerService(kPortalService));
  const Appearance appearance(desk_);
  const auto change = [&](const char* key, const QVariant& value) {
    portal.send(
        QDBusMessage::createSignal(kPortalPath, "org.freedesktop.portal.Settings", "SettingChanged")
        << "org.freedesktop.appearance" << key << QVariant::fromValue(QDBusVariant(value)));
  };
  const auto colour = [](QPalette::ColorRole role) { return QApplication::palette().color(role); };
  const QColor light = colour(QPalette::Window);
  // Said until it is heard: Qt learns who has a name a moment after the bus has told it.
  const auto isDark = [&] {
    change("color-scheme", 1U);
    return colour(QPalette::Window).lightness() < light.lightness() / 2;
  };
  QTRY_VERIFY(isDark());
  QDBusArgument orange;
  orange.beginStructure();
  orange << 1.0 << 0.5 << 0.0;
  orange.endStructure();
  change("accent-color", QVariant::fromValue(orange));
  QTRY_COMPARE(colour(QPalette::Highlight), QColor::fromRgbF(1.0F, 0.5F, 0.0F));
  change("color-scheme", 2U);
  QTRY_COMPARE(colour(QPalette::Window), light);
}

}  // namespace fexora::desktop

int main(int count, char** arguments) {
  const QTemporaryDir folder;
  qputenv("FEXORA_CONTAINER", folder.path().toUtf8());
  qputenv("XDG_CONFIG_HOME", (folder.path() + "/config").toUtf8());
  qputenv("LC_ALL", "C.UTF-8");
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(count, arguments);
  fexora::desktop::prepareApplication(application, "org.fexora.Fexora", "fexora-test");
  fexora::desktop::DesktopTest test;
  return QTest::qExec(&test, application.arguments());
}

#include "DesktopTest.moc"
