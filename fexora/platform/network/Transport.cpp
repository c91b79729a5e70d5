#include "fexora/platform/network/Transport.h"

namespace fexora {

Transport::~Transport() = default;

}  // namespace fexora
