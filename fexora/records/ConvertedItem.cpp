#include "fexora/records/ConvertedItem.h"

#include "fexora/platform/text/NumberText.h"
#include "fexora/records/CodeOf.h"

namespace fexora {
namespace {

std::string printed(NSNumber amount, const CurrencyRef& currency) {
  return fixedText(static_cast<double>(amount.floatValue()), 4) + "(" + codeOf(currency) + ")";
}

}  // namespace

ConvertedItem::ConvertedItem(const Rate& from, NSNumber amount, bool invert)
    : ConvertedItem(Key(), from.src(), from.dst(), from.rate(), amount, invert) {}

std::string ConvertedItem::description() const {
  return "From " + printed(srcAmount, srcCurrency) + " To " + printed(dstAmount, dstCurrency);
}

}  // namespace fexora
