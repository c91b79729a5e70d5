// A Qt 6 window that converts what is typed, and follows the other processes of the store. Qt rides
// on GLib's main context, so the library needs nothing more.
#include <QApplication>
#include <QDebug>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QVBoxLayout>

#include <fexora/fexora.h>

using namespace fexora;

int main(int count, char** words) {
  QApplication application(count, words);
  Log::setProcessSink(
      [](std::string_view line) { qDebug("%.*s", static_cast<int>(line.size()), line.data()); });
  QWidget window;
  auto* entry = new QLineEdit;
  auto* label = new QLabel;
  auto* layout = new QVBoxLayout(&window);
  layout->addWidget(entry);
  layout->addWidget(label);

  const auto show = [entry, label] {
    const auto dollar = currencyManager().currencyForCode("USD");
    const NSNumber amount(entry->text().toStdString());
    std::string lines;
    for (const auto& item : rateManager().convertAmount(amount, dollar, false).first.items()) {
      lines += item.description() + "\n";
    }
    label->setText(QString::fromStdString(lines));
    storeManager().startSyncTimer();  // one save, a second after the last key
  };
  QObject::connect(entry, &QLineEdit::textChanged, show);

  rateManager().setProgress([&window](const Transfer::Progress& progress) {
    window.setWindowTitle(QStringLiteral("%1 bytes have come").arg(progress.received));
  });
  new QShortcut(Qt::Key_Escape, &window, [] { rateManager().cancelRequests(); });

  storeManager().setReconcilesAfterSkip(true);  // misses nothing around its own saves
  seedBundledRates(storeManager());
  const auto refresh = [show] {
    rateManager().loadRates(storeManager().loadCurrencies(),
                            [show](bool, const ResponseError*) { show(); });
  };
  refresh();
  const auto token = NotificationCenter::defaultCenter().addObserver(fileWatcherUpdate, refresh);
  window.show();
  return QApplication::exec();
}
