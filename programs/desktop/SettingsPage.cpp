#include "programs/desktop/SettingsPage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <algorithm>

#include "programs/desktop/Autostart.h"
#include "programs/desktop/CurrencyPicker.h"
#include "programs/desktop/QtText.h"
#include "programs/desktop/Style.h"
#include "programs/sources/NamedSources.h"

namespace fexora::desktop {
namespace {

QLabel* heading(const QString& text) {
  auto* const label = new QLabel(text);
  label->setFont(fontOf(15, QFont::DemiBold));
  return label;
}

QComboBox* choices(const QStringList& texts) {
  auto* const box = new QComboBox;
  box->addItems(texts);
  return box;
}

}  // namespace

SettingsPage::SettingsPage(const Desk& desk, QWidget* parent)
    : QDialog(parent),
      desk_(desk),
      fraction_(new QSpinBox),
      separators_(new QCheckBox(tr("&Separate groups of digits"))),
      mode_(choices({tr("Light, or as the desktop"), tr("Dark")})),
      naming_(choices({tr("Names"), tr("Codes")})),
      number_(new QSpinBox),
      today_(new QPushButton),
      useSelection_(new QPushButton(tr("As in the converter"))),
      conversion_(choices({tr("The last amount"), tr("Rates of one unit")})),
      relative_(new QPushButton),
      trend_(new QCheckBox(tr("Draw how each rate &moved"))),
      ratesFrom_(choices({tr("Automatic"), tr("exchange-api, daily"), tr("European Central Bank"),
                          tr("The rates service"), tr("Nowhere")})),
      autostart_(new QCheckBox(tr("&Open at login"))) {
  setWindowTitle(tr("Settings"));
  buildFields();
  connectFields();
  reload();
}

void SettingsPage::buildFields() {
  fraction_->setRange(1, static_cast<int>(Settings::kMostFraction));
  number_->setRange(1, static_cast<int>(Settings::kMostNumberOfCurrencies));
  auto* const form = new QFormLayout(this);
  form->setContentsMargins(sized(22), sized(18), sized(22), sized(18));
  form->setVerticalSpacing(sized(10));
  form->setHorizontalSpacing(sized(16));
  addFields(*form);
  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  buttons->button(QDialogButtonBox::Close)->setText(tr("Close"));
  buttons->button(QDialogButtonBox::Close)->setIcon({});
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  form->addRow(buttons);
}

void SettingsPage::addFields(QFormLayout& form) {
  form.addRow(heading(tr("Amounts, also in the terminal")));
  form.addRow(tr("&Digits after the mark"), fraction_);
  form.addRow(QString(), separators_);
  form.addRow(heading(tr("Both windows")));
  form.addRow(tr("&Appearance"), mode_);
  form.addRow(tr("&Fresh rates from"), ratesFrom_);
  form.addRow(heading(tr("Today")));
  form.addRow(tr("S&hows"), conversion_);
  form.addRow(tr("&Unit of"), relative_);
  form.addRow(tr("&Currencies"), today_);
  form.addRow(QString(), useSelection_);
  form.addRow(tr("&Named by"), naming_);
  form.addRow(tr("&Lines at most"), number_);
  form.addRow(QString(), trend_);
  form.addRow(QString(), autostart_);
}

template <class Set>
void SettingsPage::save(Set set) {
  if (isFilling_) return;
  set();
  showChoices();
  emit changed();
}

void SettingsPage::connectFields() {
  StoreManager& store = desk_.store;
  const auto onIndex = [this](QComboBox* box, auto set) {
    connect(box, &QComboBox::currentIndexChanged, this,
            [this, set](int index) { save([&] { set(index); }); });
  };
  connect(fraction_, &QSpinBox::valueChanged, this,
          [&, this](int digits) { save([&] { store.setFraction(digits); }); });
  connect(number_, &QSpinBox::valueChanged, this,
          [&, this](int lines) { save([&] { store.setNumberOfCurrenciesInWidget(lines); }); });
  connect(separators_, &QCheckBox::toggled, this,
          [&, this](bool on) { save([&] { store.setSeporate(on); }); });
  onIndex(mode_, [&store](int index) { store.setMode(static_cast<StyleMode>(index)); });
  onIndex(naming_, [&store](int index) { store.setNamingInWidget(static_cast<Naming>(index)); });
  onIndex(conversion_, [&store](int index) {
    store.setTodayConversionMode(static_cast<TodayConversionMode>(index));
  });
  onIndex(ratesFrom_, [&store](int index) {
    store.setRatesFrom(index == 0 ? std::string()
                                  : sources::settingChoices()[static_cast<std::size_t>(index)]);
  });
  connect(today_, &QPushButton::clicked, this, &SettingsPage::chooseToday);
  connect(relative_, &QPushButton::clicked, this, &SettingsPage::chooseRelative);
  connect(useSelection_, &QPushButton::clicked, this,
          [&, this] { save([&] { store.setTodayCurrencies({}); }); });
  connect(trend_, &QCheckBox::toggled, this,
          [&, this](bool on) { save([&] { store.setTodayTrend(on); }); });
  connect(autostart_, &QCheckBox::toggled, this, [this](bool on) {
    if (!isFilling_ && !setStartsTodayAtLogin(on)) reload();
  });
}

void SettingsPage::reload() {
  const StoreManager& store = desk_.store;
  isFilling_ = true;
  fraction_->setValue(static_cast<int>(store.fraction()));
  separators_->setChecked(store.seporate());
  mode_->setCurrentIndex(store.mode() == StyleMode::dark ? 1 : 0);
  naming_->setCurrentIndex(store.namingInWidget() == Naming::codes ? 1 : 0);
  number_->setValue(static_cast<int>(store.numberOfCurrenciesInWidget()));
  conversion_->setCurrentIndex(store.todayConversionMode() == TodayConversionMode::rate ? 1 : 0);
  const auto sources = sources::settingChoices();
  const auto chosen = std::find(sources.begin(), sources.end(), store.ratesFrom());
  ratesFrom_->setCurrentIndex(chosen != sources.end() ? static_cast<int>(chosen - sources.begin())
                                                      : 0);
  trend_->setChecked(store.todayTrend());
  autostart_->setChecked(startsTodayAtLogin());
  isFilling_ = false;
  showChoices();
}

void SettingsPage::showChoices() {
  const auto& chosen = desk_.store.todayCurrencies();
  QStringList codes;
  for (const CurrencyRef& each : chosen) codes << codeOf(*each);
  constexpr int kShown = 5;
  const bool isCut = codes.size() > kShown;
  if (isCut) codes.resize(kShown);
  today_->setText(chosen.empty() ? tr("Choose…") : codes.join(' ') + (isCut ? " …" : ""));
  useSelection_->setEnabled(!chosen.empty());
  const Currency& relative = *desk_.store.todayRelativeCurrency();
  relative_->setText(codeOf(relative) + " · " + nameOf(relative));
  relative_->setEnabled(desk_.store.todayConversionMode() == TodayConversionMode::rate);
}

void SettingsPage::chooseToday() {
  CurrencyPicker picker(desk_, CurrencyPicker::Takes::several, this);
  const auto& chosen = desk_.store.todayCurrencies();
  picker.setWindowTitle(tr("Currencies in Today"));
  picker.setFirst(chosen.empty() ? desk_.store.loadCurrencies() : chosen);
  picker.setTicked(chosen);
  if (picker.exec() == QDialog::Accepted) {
    save([&] { desk_.store.setTodayCurrencies(picker.taken()); });
  }
}

void SettingsPage::chooseRelative() {
  CurrencyPicker picker(desk_, CurrencyPicker::Takes::one, this);
  picker.setWindowTitle(tr("One unit of"));
  picker.setFirst(desk_.store.loadCurrencies());
  if (picker.exec() != QDialog::Accepted) return;
  save([&] { desk_.store.setTodayRelativeCurrency(picker.taken().front()); });
}

}  // namespace fexora::desktop
