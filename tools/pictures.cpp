// Draws the windows in the states that a person meets, into the folder named on the command line.
// tools/pictures runs it once a locale and scale: the states that follow the folder are those to
// draw.
#include <QAbstractButton>
#include <QApplication>
#include <QButtonGroup>
#include <QDir>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QTemporaryDir>
#include <QTest>
#include <cmath>
#include <functional>
#include <map>
#include <random>
#include <utility>

#include "fexora/platform/files/ReadOnlyFiles.h"

#include "programs/converter/ConverterWindow.h"
#include "programs/desktop/AmountField.h"
#include "programs/desktop/Appearance.h"
#include "programs/desktop/CurrencyPicker.h"
#include "programs/desktop/DayPicker.h"
#include "programs/desktop/LinesModel.h"
#include "programs/desktop/NoticeBar.h"
#include "programs/desktop/OpenLine.h"
#include "programs/desktop/PastDayRates.h"
#include "programs/desktop/PastImport.h"
#include "programs/desktop/PickerModel.h"
#include "programs/desktop/PlotPanel.h"
#include "programs/desktop/QtText.h"
#include "programs/desktop/RatePlot.h"
#include "programs/desktop/Refresher.h"
#include "programs/desktop/SettingsPage.h"
#include "programs/desktop/Style.h"
#include "programs/desktop/TodayModel.h"
#include "programs/desktop/WindowProgram.h"
#include "programs/today/TodayWindow.h"

namespace fexora::desktop {
namespace {

// A quarter of an answer, and no more of it.
class SlowTransport final : public Transport {
 public:
  void get(const std::string& /*address*/, Reader /*read*/, Completion /*complete*/) override {}
  void follow(const std::string& /*address*/, Reader /*read*/, Completion /*complete*/,
              const std::shared_ptr<Transfer>& transfer) override {
    transfer->counts()->set(12U << 10, 48U << 10);
    transfer->tell();
  }
};

class Pictures {
 public:
  explicit Pictures(QString folder) : folder_(std::move(folder)), desk_(Desk::process()) {}

  void draw(const QString& state) {
    static const std::map<QString, void (Pictures::*)()> kStates = {
        {"old", &Pictures::old},
        {"fresh", &Pictures::fresh},
        {"ambiguous", &Pictures::ambiguous},
        {"calculation", &Pictures::calculation},
        {"refused", &Pictures::refused},
        {"failed", &Pictures::failed},
        {"lost", &Pictures::lost},
        {"refreshing", &Pictures::refreshing},
        {"picker", &Pictures::picker},
        {"settings", &Pictures::settings},
        {"dark", &Pictures::dark},
        {"narrow", &Pictures::narrow},
        {"plot", &Pictures::plot},
        {"years", &Pictures::years},
        {"gaps", &Pictures::gaps},
        {"offer", &Pictures::offer},
        {"getting", &Pictures::getting},
        {"past", &Pictures::past},
        {"unknown", &Pictures::unknown},
        {"calendar", &Pictures::calendar},
        {"today", &Pictures::today},
        {"rates", &Pictures::rates},
        {"trend", &Pictures::trend}};
    const auto found = kStates.find(state.section('-', 0, 0));
    if (found == kStates.end()) qFatal("no such state");
    name_ = state;
    prepare();
    (this->*found->second)();
  }

 private:
  void prepare() {
    QDir(toQt(desk_.store.applicationDocumentsDirectory()) + "/.fexora-history")
        .removeRecursively();
    desk_.store.setMode(StyleMode::light);
    desk_.store.setTodayConversionMode(TodayConversionMode::linear);
    std::vector<CurrencyRef> selection;
    for (const char* code : {"EUR", "GBP", "JPY", "BTC", "DEM"}) {
      const auto known = desk_.catalogue.currencyForCode(code);
      selection.push_back(known != nullptr ? known : Currency::make(code));
    }
    desk_.store.saveCurrencies(selection);
    desk_.store.saveSourceCurrency(desk_.catalogue.currencyForCode("USD"), 100, true);
    appearance_.apply();
  }

  void save(QWidget& window) {
    window.show();
    for (int i = 0; i < 5; ++i) QApplication::processEvents();
    QPixmap picture = window.grab();
    picture.save(folder_ + '/' + name_ + ".png");
  }

  void converter(const QString& typed) {
    ConverterWindow window(desk_, appearance_);
    window.activate();
    if (!typed.isEmpty()) window.field().type(typed);
    window.list().setCurrentIndex(window.lines().index(0));
    save(window);
  }

  void old() { converter({}); }
  void fresh() {
    Response answer;
    answer.setUpdated(desk_.now().secondsSince1970() - 60);
    answer.setSource("European reference rates");
    // Without one that then is the bundle's.
    auto rates = desk_.store.loadUSDRates().value();
    std::erase_if(rates, [](const USDRateRef& each) { return each->code() == "BTC"; });
    answer.setRates(rates);
    desk_.rates.takeAnswer(answer, RatesAnswer::Origin::service, true);
    ConverterWindow window(desk_, appearance_);
    window.list().setCurrentIndex(window.lines().index(1));
    QTest::keyClick(&window.list(), Qt::Key_Delete);
    save(window);
  }
  void ambiguous() { converter("1,234"); }
  void calculation() { converter("12+3*2"); }
  void failed() {
    desk_.rates.setRatesURL("http://127.0.0.1:1/rates.json");
    ConverterWindow window(desk_, appearance_);
    window.refresher().start();
    desk_.platform.loop->runUntil([&] { return !window.refresher().isRunning(); });
    save(window);
  }
  void lost() {
    ReadOnlyFiles refusing;
    Files* const usual = std::exchange(desk_.platform.files, &refusing);
    desk_.rates.setRatesURL("http://127.0.0.1:1/rates.json");
    ConverterWindow window(desk_, appearance_);
    window.field().type("555");
    window.refresher().start();
    desk_.platform.loop->runUntil(
        [&] { return !window.refresher().isRunning() && !desk_.store.saveProblem().empty(); });
    save(window);
    desk_.platform.files = usual;
  }
  void refreshing() {
    SlowTransport slow;
    Transport* const usual = std::exchange(desk_.platform.transport, &slow);
    ConverterWindow window(desk_, appearance_);
    window.refresher().start();
    save(window);
    window.refresher().stop();
    desk_.platform.transport = usual;
  }
  void refused() { converter("12x"); }
  void dark() {
    desk_.store.setMode(StyleMode::dark);
    appearance_.apply();
    converter("12+3*2");
  }
  void narrow() {
    ConverterWindow window(desk_, appearance_);
    window.field().type("123456789.25");
    window.resize(window.minimumWidth(), sized(480));
    save(window);
  }
  void picker() {
    CurrencyPicker picker(desk_, CurrencyPicker::Takes::several);
    picker.entry().setText("switz");
    picker.model().toggle(0);
    save(picker);
  }
  void settings() {
    SettingsPage page(desk_);
    save(page);
  }
  // Rates of past days that are made up: walks of one chance, on working days, or on few.
  void keepPast(Day first, Day last, bool isWhole) {
    std::mt19937 chance(11);
    const auto step = [&] { return static_cast<double>(chance() % 2001) / 1000 - 1; };
    std::vector<PublishedTable> tables;
    double dollar = 1.18;
    double pound = 0.71;
    double yen = 133;
    for (Day day = first; day <= last; day += std::chrono::days(1)) {
      const unsigned weekday = std::chrono::weekday(day).c_encoding();
      if (weekday == 0 || weekday == 6) continue;
      for (double* const rate : {&dollar, &pound, &yen}) *rate *= std::exp(0.006 * step());
      const bool isLast = last - day < std::chrono::days(20);
      if (!isWhole && !isLast && chance() % 20 != 0) continue;
      tables.push_back(
          {day,
           "ecb",
           "EUR",
           {{"USD", fixed(dollar, 4)}, {"GBP", fixed(pound, 5)}, {"JPY", fixed(yen, 2)}}});
    }
    const auto kept = rateHistory(desk_.store.applicationDocumentsDirectory(),
                                  *desk_.platform.files, *desk_.platform.log)
                          ->keep(tables, desk_.now().secondsSince1970());
    if (!kept.problem.empty()) qFatal("%s", kept.problem.c_str());
  }
  static std::string fixed(double value, int digits) {
    return QString::number(value, 'f', digits).toStdString();
  }

  // The first line, opened, at a range by its place among the buttons.
  void open(ConverterWindow& window, int range) {
    window.activate();
    window.openLine().open(0);
    PlotPanel& panel = *window.openLine().panel();
    if (!QTest::qWaitFor([&] { return panel.isAnswered(); })) qFatal("no history");
    if (panel.hasRates()) panel.findChild<QButtonGroup*>()->button(range)->click();
    panel.takeFocus();
  }
  void plot() {
    keepPast(dayAgo(400), dayAgo(1), true);
    ConverterWindow window(desk_, appearance_);
    window.resize(name_.endsWith("narrow") ? window.minimumWidth() : sized(400), sized(580));
    open(window, 0);
    for (int i = 0; i < 7; ++i) QTest::keyClick(&window.openLine().panel()->plot(), Qt::Key_Left);
    save(window);
  }
  void years() {
    desk_.store.setMode(StyleMode::dark);
    appearance_.apply();
    keepPast(std::chrono::year(1999) / 1 / 4, dayAgo(1), true);
    ConverterWindow window(desk_, appearance_);
    open(window, 3);
    window.list().setFocus();
    save(window);
  }
  void gaps() {
    keepPast(dayAgo(900), dayAgo(1), false);
    ConverterWindow window(desk_, appearance_);
    open(window, 3);
    save(window);
  }
  void offer() {
    ConverterWindow window(desk_, appearance_);
    open(window, 0);
    save(window);
  }
  void getting() {
    SlowTransport slow;
    Transport* const usual = std::exchange(desk_.platform.transport, &slow);
    ConverterWindow window(desk_, appearance_);
    open(window, 0);
    window.openLine().import().start();
    save(window);
    window.openLine().import().stop();
    desk_.platform.transport = usual;
  }
  void past() {
    keepPast(dayAgo(400), dayAgo(1), true);
    ConverterWindow window(desk_, appearance_);
    window.resize(name_.endsWith("narrow") ? window.minimumWidth() : sized(400), sized(580));
    showDay(window, std::chrono::year(2026) / 9 / 12);
  }
  void unknown() {
    ConverterWindow window(desk_, appearance_);
    showDay(window, std::chrono::year(2024) / 3 / 1);
  }
  void showDay(ConverterWindow& window, Day day) {
    window.activate();
    window.showDay(day);
    const auto isAnswered = [&] { return window.findChild<PastDayRates*>()->isAnswered(); };
    if (!QTest::qWaitFor(isAnswered)) qFatal("no history");
    save(window);
  }
  void calendar() {
    DayPicker picker(desk_, Day(std::chrono::year(2026) / 9 / 12));
    save(picker);
  }
  Day dayAgo(int days) const {
    return dayOfMoment(desk_.now().secondsSince1970()) - std::chrono::days(days);
  }
  void today() {
    TodayWindow window(desk_, appearance_);
    save(window);
  }
  void trend() {
    keepPast(dayAgo(400), dayAgo(1), true);
    const bool isDark = name_.endsWith("dark");
    desk_.store.setMode(isDark ? StyleMode::dark : StyleMode::light);
    desk_.store.setTodayTrend(true);
    TodayWindow window(desk_, appearance_);
    const auto isDrawn = [&] {
      return window.lines().index(0).data(TodayModel::trendRole).isValid();
    };
    if (!QTest::qWaitFor(isDrawn)) qFatal("no trend");
    save(window);
    desk_.store.setTodayTrend(false);
  }
  void rates() {
    desk_.store.setMode(StyleMode::dark);
    desk_.store.setTodayConversionMode(TodayConversionMode::rate);
    desk_.store.setTodayRelativeCurrency(desk_.catalogue.currencyForCode("EUR"));
    desk_.store.setNamingInWidget(Naming::codes);
    TodayWindow window(desk_, appearance_);
    save(window);
  }

  QString folder_;
  QString name_;
  Desk desk_;
  Appearance appearance_{desk_};
};

}  // namespace
}  // namespace fexora::desktop

int main(int count, char** arguments) {
  using namespace fexora::desktop;
  const QTemporaryDir container;
  qputenv("FEXORA_CONTAINER", container.path().toUtf8());
  qputenv("XDG_CONFIG_HOME", container.path().toUtf8());
  QApplication application(count, arguments);
  QApplication::setFont(QFont("Noto Sans", 10));
  QApplication::setCursorFlashTime(0);
  prepareApplication(application, "org.fexora.Fexora", "fexora-pictures");
  Pictures pictures(application.arguments().value(1));
  for (const QString& state : application.arguments().mid(2)) pictures.draw(state);
  return 0;
}
