#include "fexora/history/PastRate.h"

#include <algorithm>

namespace fexora {

const char* text(PastRate::How how) noexcept {
  switch (how) {
    case PastRate::How::printed:
      return "printed";
    case PastRate::How::crossed:
      return "crossed";
    case PastRate::How::byLaw:
      break;
  }
  return "byLaw";
}

int rankOf(const PastQuestion& question, std::string_view source) noexcept {
  const auto& wanted = question.sources;
  if (wanted.empty()) return source == "ecb" ? 0 : source == "bundled" ? 2 : 1;
  const auto at = std::find(wanted.begin(), wanted.end(), source);
  return at != wanted.end() ? static_cast<int>(at - wanted.begin()) : -1;
}

}  // namespace fexora
