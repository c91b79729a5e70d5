#include "programs/shared/Selection.h"

#include <unordered_set>
#include <utility>

#include "programs/shared/Currencies.h"

namespace fexora::program {
namespace {

std::vector<CurrencyRef> unseen(const std::vector<CurrencyRef>& list,
                                std::unordered_set<std::string> seen) {
  std::vector<CurrencyRef> lines;
  for (const CurrencyRef& each : list) {
    CurrencyRef known = findCurrency(each->code());
    if (known == nullptr) known = each;
    if (seen.insert(known->code()).second) lines.push_back(std::move(known));
  }
  return lines;
}

}  // namespace

std::vector<CurrencyRef> withoutDoubles(const std::vector<CurrencyRef>& list) {
  return unseen(list, {});
}

std::vector<CurrencyRef> linesOf(const std::vector<CurrencyRef>& list, const Currency& source) {
  return unseen(list, {source.code()});
}

}  // namespace fexora::program
