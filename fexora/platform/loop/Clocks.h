// The two clocks of the process, as RunLoop promises them. Any thread.
#pragma once

#include "fexora/platform/base/Export.h"

namespace fexora {

FEXORA_API double monotonicClockSeconds() noexcept;
FEXORA_API double wallClockSeconds() noexcept;

}  // namespace fexora
