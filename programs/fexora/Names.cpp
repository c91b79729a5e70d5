#include "programs/fexora/Names.h"

#include <unistd.h>

#include "fexora/catalogue/CurrencyNames.h"
#include "fexora/platform/base/NoDestructor.h"

namespace fexora::program {

void prepareNames(const CommandLine& line) {
  static NoDestructor<CurrencyNames> names(Text::process(), line.language);
  Platform::process().strings = &*names;
}

bool showsNames(const CommandLine& line) {
  return asksForNames(line) || isatty(STDOUT_FILENO) != 0;
}

bool asksForNames(const CommandLine& line) {
  return line.names || !line.language.empty();
}

std::string nameOf(const Currency& currency) {
  return localizedString(*Platform::process().strings, currency.code());
}

std::string codeAndName(const Currency& currency, bool names) {
  const std::string name = names ? nameOf(currency) : currency.code();
  return name == currency.code() ? name : currency.code() + " (" + name + ")";
}

}  // namespace fexora::program
