// Which currencies are traded most, where one of several has to come first.
#pragma once

#include <cstddef>
#include <string_view>

namespace fexora {

// The place by turnover (Triennial Central Bank Survey of the Bank for International Settlements,
// 2022); one number, larger than any of these, for all beyond its list. Any thread.
std::size_t tradedPlace(std::string_view code) noexcept;

}  // namespace fexora
