// Draws the windows in the states that a person meets, into the folder named on the command line.
// tools/pictures runs it once a locale and scale: the states that follow the folder are those to
// draw.
#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QTemporaryDir>
#include <QTest>
#include <functional>
#include <map>
#include <utility>

#include "fexora/platform/files/ReadOnlyFiles.h"

#include "programs/converter/ConverterWindow.h"
#include "programs/desktop/AmountField.h"
#include "programs/desktop/Appearance.h"
#include "programs/desktop/CurrencyPicker.h"
#include "programs/desktop/LinesModel.h"
#include "programs/desktop/NoticeBar.h"
#include "programs/desktop/PickerModel.h"
#include "programs/desktop/QtText.h"
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
        {"today", &Pictures::today},
        {"rates", &Pictures::rates}};
    const auto found = kStates.find(state.section('-', 0, 0));
    if (found == kStates.end()) qFatal("no such state");
    name_ = state;
    prepare();
    (this->*found->second)();
  }

 private:
  void prepare() {
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
  void today() {
    TodayWindow window(desk_, appearance_);
    save(window);
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
