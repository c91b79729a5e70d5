// Sends one request and brings its answer as decoded JSON.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "fexora/platform/foundation/Value.h"
#include "fexora/platform/network/ResponseError.h"

namespace fexora {

class FEXORA_API Transport {
 public:
  // The root of the answer, or the error; see NetworkManager for what both or neither mean.
  using Completion = std::function<void(std::optional<Value>, std::optional<ResponseError>)>;

  Transport() = default;
  Transport(const Transport&) = delete;
  Transport& operator=(const Transport&) = delete;
  virtual ~Transport();

  // Returns at once, whatever the network does; `complete` is called later, once, on the main
  // thread. JSON true and false arrive as the numbers 1 and 0. Main thread.
  virtual void get(const std::string& address, Completion complete) = 0;

  static Transport& process();
};

}  // namespace fexora
