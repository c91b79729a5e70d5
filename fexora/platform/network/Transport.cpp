#include "fexora/platform/network/Transport.h"

namespace fexora {

Transport::~Transport() = default;

void Transport::follow(const std::string& address, Reader read, Completion complete,
                       const std::shared_ptr<Transfer>& /*transfer*/) {
  get(address, read, std::move(complete));
}

}  // namespace fexora
