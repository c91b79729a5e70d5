// What speaks against rates that came, or against one of them: structured, so that each surface
// says it in its own words and language.
#pragma once

#include <cstdint>
#include <string>

#include "fexora/platform/base/Export.h"

namespace fexora {

struct FEXORA_API RatesReason {
  enum class Kind : std::uint8_t {
    noRates,        // nothing but the dollar, or not even that
    wrongRate,      // `code` is `now`, which is not finite or not above 0
    noDollar,       // the US dollar is missing
    wrongDollar,    // one US dollar is `now` US dollars
    otherBase,      // they are quoted against `code`, whose own rate is 1
    twice,          // `code` is there as `before` and as `now`
    moved,          // `code` was `before` and is `now`
    manyMoved,      // of `before` that were compared, `now` leaped
    allMoved,       // nearly all moved together; `now` is the median's factor
    vanished,       // `code`, which was there, is missing
    contradiction,  // two sources of one answer say `before` and `now` of `code`
    future,         // they are dated `now`, seconds since 1970
    older,          // they are dated `now`, before the held ones of `before`
    unchecked,      // the check itself failed
    other,          // a host's own: `text`
  };

  Kind kind = Kind::other;
  std::string code;
  double before = 0;
  double now = 0;
  std::string text;

  // One English line without a full stop. Codes are shown as far as they can be codes. May throw
  // std::bad_alloc.
  std::string sentence() const;
};

// The name of the kind ("noDollar"), for JSON.
FEXORA_API const char* text(RatesReason::Kind kind) noexcept;

}  // namespace fexora
