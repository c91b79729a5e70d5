#include "programs/shared/Selection.h"

#include <unordered_set>
#include <utility>

#include "programs/shared/Currencies.h"

namespace fexora::program {

std::vector<CurrencyRef> linesOf(const std::vector<CurrencyRef>& list, const Currency& source) {
  std::vector<CurrencyRef> lines;
  std::unordered_set<std::string> seen = {source.code()};
  for (const CurrencyRef& each : list) {
    CurrencyRef known = findCurrency(each->code());
    if (known == nullptr) known = each;
    if (seen.insert(known->code()).second) lines.push_back(std::move(known));
  }
  return lines;
}

}  // namespace fexora::program
