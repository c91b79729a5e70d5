// Asks a service and maps its JSON answer into a record.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "fexora/platform/mapping/Mapper.h"
#include "fexora/platform/network/Transport.h"

namespace fexora {

class NetworkManager {
 public:
  // Sends a GET of `address` and returns at once. `complete` is called once, later, on the main
  // thread: with a record made from the answer's object, or with the reason why there is none. An
  // answer whose root is no object is an error of kind notAnObject; an object for which no record
  // can be made gives neither record nor error. Main thread.
  template <class Record>
  static void simpleRequest(
      Transport& transport, const std::string& address,
      std::function<void(std::shared_ptr<Record>, std::optional<ResponseError>)> complete) {
    transport.get(address, [address, complete = std::move(complete)](
                               std::optional<Value> root, std::optional<ResponseError> error) {
      if (!root) {
        complete(nullptr, std::move(error));
      } else if (root->dictionary() == nullptr) {
        complete(nullptr,
                 ResponseError{ResponseError::Kind::notAnObject, address,
                               "the answer of " + address + " is JSON but not an object", 0});
      } else {
        complete(Mapper<Record>::map(*root), std::move(error));
      }
    });
  }
};

}  // namespace fexora
