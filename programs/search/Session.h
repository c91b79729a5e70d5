// The program's time on the session bus: owns its name while it is asked, and a while longer.
#pragma once

#include "programs/search/Service.h"

namespace fexora::search {

// Serves until nobody has asked for `idleSeconds` and no converter that it opened is left. False
// when there is no session bus, or another process serves it already.
bool serve(double idleSeconds);

}  // namespace fexora::search
