#include "programs/shared/ShownNames.h"

#include "fexora/catalogue/CurrencyNames.h"
#include "fexora/platform/base/NoDestructor.h"

namespace fexora::program {

void useNamesOf(const std::string& language) {
  static NoDestructor<CurrencyNames> names(Text::process(), language);
  Platform::process().strings = &*names;
}

std::string nameOf(const Currency& currency) {
  return localizedString(*Platform::process().strings, currency.code());
}

std::string codeAndName(const Currency& currency, bool names) {
  const std::string name = names ? nameOf(currency) : currency.code();
  return name == currency.code() ? name : currency.code() + " (" + name + ")";
}

}  // namespace fexora::program
