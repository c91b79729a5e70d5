#include "fexora/store/Settings.h"

#include <new>
#include <optional>
#include <string_view>
#include <utility>

#include "fexora/platform/base/NoDestructor.h"
#include "fexora/platform/mapping/Mapper.h"

namespace fexora {
namespace {

constexpr std::string_view kMode = "Mode";
constexpr std::string_view kFraction = "Fraction";
constexpr std::string_view kSeporate = "Seporate";
constexpr std::string_view kNamingInWidget = "NamingInWidget";
constexpr std::string_view kNumberOfCurrenciesInWidget = "NumberOfCurrenciesInWidget";
constexpr std::string_view kTodayCurrencies = "TodayCurrencies";
constexpr std::string_view kTodayConversionMode = "TodayConversionMode";
constexpr std::string_view kTodayRelativeCurrency = "TodayRelativeCurrency";

const NSNumber* number(const Dictionary& content, std::string_view key, NSNumber::Kind kind) {
  const Value* value = content.find(key);
  const NSNumber* number = value != nullptr ? value->number() : nullptr;
  return number != nullptr && number->kind() == kind ? number : nullptr;
}

std::int64_t integer(const Dictionary& content, std::string_view key) {
  const NSNumber* stored = number(content, key, NSNumber::Kind::integer);
  return stored != nullptr ? stored->intValue() : 0;
}

// Each of the three enums has the raw values 0, the default, and 1.
template <class Enum>
void take(Enum& mode, const Dictionary& content, std::string_view key) {
  mode = static_cast<Enum>(integer(content, key) == 1 ? 1 : 0);
}

void takeCount(std::int64_t& count, const Dictionary& content, std::string_view key) {
  if (const std::int64_t stored = integer(content, key); stored != 0) count = stored;
}

}  // namespace

CurrencyRef Settings::defaultRelativeCurrency() {
  constexpr const char* kCode = "USD";
  try {
    return Currency::make(kCode);
  } catch (const std::bad_alloc&) {
    static NoDestructor<Currency> shared(kCode);
    return {std::shared_ptr<void>(), &*shared};
  }
}

Settings Settings::from(const Dictionary& content) {
  Settings settings;
  take(settings.mode, content, kMode);
  takeCount(settings.fraction, content, kFraction);
  if (const NSNumber* flag = number(content, kSeporate, NSNumber::Kind::boolean)) {
    settings.seporate = flag->boolValue();
  }
  take(settings.namingInWidget, content, kNamingInWidget);
  takeCount(settings.numberOfCurrenciesInWidget, content, kNumberOfCurrenciesInWidget);
  if (const Value* stored = content.find(kTodayCurrencies)) {
    if (auto list = Mapper<Currency>::mapArray(*stored))
      settings.todayCurrencies = *std::move(list);
  }
  take(settings.todayConversionMode, content, kTodayConversionMode);
  if (const Value* stored = content.find(kTodayRelativeCurrency)) {
    if (auto relative = Mapper<Currency>::map(*stored)) settings.todayRelativeCurrency = relative;
  }
  return settings;
}

void Settings::putInto(Dictionary& content) const {
  content.set(kMode, static_cast<std::int64_t>(mode));
  content.set(kFraction, fraction);
  content.set(kSeporate, seporate);
  content.set(kNamingInWidget, static_cast<std::int64_t>(namingInWidget));
  content.set(kNumberOfCurrenciesInWidget, numberOfCurrenciesInWidget);
  content.set(kTodayCurrencies, Mapper<Currency>::toJSONArray(todayCurrencies));
  content.set(kTodayConversionMode, static_cast<std::int64_t>(todayConversionMode));
  content.set(kTodayRelativeCurrency, Mapper<Currency>::toJSON(*todayRelativeCurrency));
}

}  // namespace fexora
