// The store that the system uses: "Store.plist", with eight settings in typed form and the cached
// currencies, rates and source amount.
//
// Setting a setting writes all eight into the dictionary and saves the file at once. Loading sets
// all eight from the dictionary, as Settings::from reads them, and writes nothing. Main thread
// only.
//
// What finds no memory is not done and said in the log: a setting keeps its new value, which the
// next save writes; what was not loaded is loaded by the next save, which fails; a list or record
// that was asked for is missing.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fexora/records/StoreSource.h"
#include "fexora/records/USDRate.h"
#include "fexora/store/KeptRates.h"
#include "fexora/store/RatesAnswer.h"
#include "fexora/store/Settings.h"
#include "fexora/store/StoreKeys.h"
#include "fexora/store/UserStoreManager.h"

namespace fexora {

class CurrencyManager;

class FEXORA_API StoreManager : public UserStoreManager {
 public:
  static constexpr std::int64_t kDefaultFraction = Settings::kDefaultFraction;
  static constexpr std::int64_t kDefaultNumberOfCurrencies = Settings::kDefaultNumberOfCurrencies;

  // Reads the file, or makes it, and watches its folder. The catalogue is the shared one when none
  // is given; it is asked for at its first use.
  StoreManager();
  explicit StoreManager(Platform& platform, CurrencyManager* catalogue = nullptr);
  // The store in a folder of its own, by its absolute path; "": in memory, where every save goes
  // well. As many as one likes, each on its platform's loop: see docs/embedding.md. A host's thread
  // that runs that loop counts as the main thread of all that has the platform.
  StoreManager(Platform& platform, CurrencyManager* catalogue, std::string folder);

  std::string storeName() const override { return "Store.plist"; }
  void loadData() override;

  virtual std::int64_t fraction() const { return settings_.fraction; }
  virtual void setFraction(std::int64_t fraction);
  virtual StyleMode mode() const { return settings_.mode; }
  virtual void setMode(StyleMode mode);
  virtual bool seporate() const { return settings_.seporate; }
  virtual void setSeporate(bool seporate);
  virtual Naming namingInWidget() const { return settings_.namingInWidget; }
  virtual void setNamingInWidget(Naming naming);
  virtual std::int64_t numberOfCurrenciesInWidget() const {
    return settings_.numberOfCurrenciesInWidget;
  }
  virtual void setNumberOfCurrenciesInWidget(std::int64_t number);
  virtual const std::vector<CurrencyRef>& todayCurrencies() const {
    return settings_.todayCurrencies;
  }
  virtual void setTodayCurrencies(std::vector<CurrencyRef> currencies);
  virtual TodayConversionMode todayConversionMode() const { return settings_.todayConversionMode; }
  virtual void setTodayConversionMode(TodayConversionMode mode);
  // Never null: setting null sets the default, "USD".
  virtual const CurrencyRef& todayRelativeCurrency() const {
    return settings_.todayRelativeCurrency;
  }
  virtual void setTodayRelativeCurrency(CurrencyRef currency);

  // Where fresh rates come from, as the person chose: a word that the programs give a meaning, and
  // the library none. Empty where nobody chose. Setting it saves the file at once; "" takes it out.
  std::string ratesFrom() const;
  void setRatesFrom(std::string_view word);
  // Whether the widget draws how each rate moved; false where nobody chose. Setting it saves the
  // file at once.
  bool todayTrend() const;
  void setTodayTrend(bool isDrawn);

  // A one-shot switch: false makes the next saveSettings() do nothing but set it to true again.
  virtual bool canSave() const { return canSave_; }
  virtual void setCanSave(bool canSave) { canSave_ = canSave; }
  virtual void saveSettings();

  // Keeps the rates with the current time as their date.
  virtual void saveUSDRates(const std::vector<USDRateRef>& rates, bool sync);
  // What was said of the rates that the next saveUSDRates() keeps, and only of these, and the
  // tables that are kept beside them (see tablesBeside). Without an announcement those stay.
  void announceRates(RatesAnswer answer, std::vector<RatesTable> beside = {}) {
    announced_ = {std::move(answer), std::move(beside)};
  }
  // The same of the rates that are kept; nothing when nobody has said anything of them.
  std::optional<RatesAnswer> ratesAnswer() const;
  // Nothing when no list of rates is kept.
  virtual std::optional<std::vector<USDRateRef>> loadUSDRates() const;
  // Of what is kept only those whose code `isWanted`, in the same order: for whoever needs a few of
  // many. Looks into `ud` itself, whatever the one above has been made to do.
  using IsWanted = std::function<bool(std::string_view code)>;
  std::optional<std::vector<USDRateRef>> loadUSDRates(const IsWanted& isWanted) const;
  // Saves the file at once.
  virtual void saveCurrencies(const std::vector<CurrencyRef>& currencies);
  // The kept selection, which may be empty; without one the catalogue's USD and EUR, as far as it
  // has them.
  virtual std::vector<CurrencyRef> loadCurrencies() const;
  // With `sync` the file is written before the call returns, else with the next save of any kind.
  virtual StoreSourceRef saveSourceCurrency(const CurrencyRef& currency, NSNumber withAmount,
                                            bool sync);
  // Null when none is kept.
  virtual StoreSourceRef loadSourceCurrency() const;

 private:
  void loadSettings();
  void put(std::string_view key, Value value);
  template <class Field>
  void change(Field& field, Field value);
  CurrencyManager& catalogue() const;

  CurrencyManager* catalogue_;
  Settings settings_;
  struct Announcement {
    RatesAnswer answer;
    std::vector<RatesTable> beside;
  };
  std::optional<Announcement> announced_;
  bool canSave_ = true;
};

// The process's one store, made at the first call and never destroyed. Any thread may be first; its
// operations belong to the main thread.
FEXORA_API StoreManager& storeManager();

}  // namespace fexora
