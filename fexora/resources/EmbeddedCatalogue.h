// The codes of the catalogue resource, compiled in for when the file is missing or unreadable.
#pragma once

#include <span>

#include "fexora/resources/TableCode.h"

namespace fexora {

// The same codes as in Currency.plist, in the same order; see currencies.tsv, from which both are
// made.
std::span<const TableCode> embeddedCatalogue() noexcept;

}  // namespace fexora
