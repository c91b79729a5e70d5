// host AMOUNT: a host in a terminal that does not mislead. It says how it read the amount and how
// old its rates are, shows what can be paid, and asks nobody.
#include <cstdio>

#include "DomainStrings.h"

using namespace fexora;

// What changes after a release of the library, a host adds itself.
static void addFacts() {
  CurrencyFacts row = *currencyFacts("SEK");
  row.kind = CurrencyKind::withdrawn;
  row.successor = "EUR";
  row.units = 10.5;  // became one euro
  row.successorUnits = 1;
  addCurrencyFacts({&row, 1});
}

static void show(const Currency& currency, double amount) {
  std::int64_t digits = storeManager().fraction();
  if (const CurrencyFacts* facts = currencyFacts(currency.code()); facts && facts->digits) {
    amount = roundedToMinorUnit(amount, *facts, Rounding::halfEven);
    digits = *facts->digits;
  }
  const NumberFormat format(digits, storeManager().seporate());
  std::printf("%s %s\n", format.amount(amount).c_str(), currency.code().c_str());
}

int main(int count, char** words) {
  static DomainStrings strings;
  Platform::process().strings = &strings;  // before the library's first use
  addFacts();

  rateManager().setAnswerCheck(plausible());  // once, at the start
  seedBundledRates(storeManager());
  const auto selection = storeManager().loadCurrencies();
  rateManager().loadStoredRates(selection);  // no request

  const TypedAmount typed = readAmount(count > 1 ? words[1] : "");
  if (typed.kind == TypedAmount::Kind::refused) {
    std::printf("at %zu: %.*s\n", typed.place, int(typed.reason.size()), typed.reason.data());
    return 2;
  }
  if (typed.other) std::printf("read as %g, not as %g\n", typed.value, *typed.other);  // "1,234"
  auto source = currencyManager().currencyForCode(typed.currency);  // null: the text names none
  if (source == nullptr) source = currencyManager().currencyForCode("USD");

  const auto converted = rateManager().convertAmount(typed.value, source, false).first;
  for (const CurrencyRef& currency : selection) {  // in the person's order
    const auto item = converted.itemForDstCurrency(currency);
    if (item) show(*currency, item->dstAmount.doubleValue());
  }

  const Freshness fresh = rateManager().freshness();  // of which day, from whom, and how old
  std::printf("rates: %s, %s\n", text(fresh.origin), text(fresh.state));
}
