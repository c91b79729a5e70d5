// Asks a service and maps its JSON answer into a record.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "fexora/platform/mapping/Mapper.h"
#include "fexora/platform/network/ShownAddress.h"
#include "fexora/platform/network/Transport.h"

namespace fexora {

class NetworkManager {
 public:
  // Sends a GET of `address` and returns at once. `complete` is called once, later, on the main
  // thread: with a record made from the answer's object, or with the reason why there is none. An
  // answer whose root is no object is an error of kind notAnObject; an object for which no record
  // can be made gives neither record nor error. A request whose `transfer` was cancelled before
  // the completion has the error of kind cancelled, whatever came of it, and with the process's
  // own transport its connection is closed by then; where the transport ends before, the completion
  // is never called. Main thread; the record's mapping runs on any.
  template <class Record>
  static void simpleRequest(
      Transport& transport, const std::string& address,
      std::function<void(std::shared_ptr<Record>, std::optional<ResponseError>)> complete,
      const std::shared_ptr<Transfer>& transfer = nullptr) {
    send(
        transport, address, &read<Record>,
        [complete = std::move(complete)](const std::shared_ptr<MappableModel>& record,
                                         std::optional<ResponseError> error) {
          complete(std::static_pointer_cast<Record>(record), std::move(error));
        },
        transfer);
  }

  // The same for an answer of any form: its text, or why there is none.
  static void textRequest(
      Transport& transport, const std::string& address,
      std::function<void(std::optional<std::string>, std::optional<ResponseError>)> complete,
      const std::shared_ptr<Transfer>& transfer = nullptr) {
    send(
        transport, address, nullptr,
        [complete = std::move(complete)](const std::shared_ptr<MappableModel>& record,
                                         std::optional<ResponseError> error) {
          const auto answer = std::static_pointer_cast<TextAnswer>(record);
          complete(answer != nullptr ? std::optional(answer->text()) : std::nullopt,
                   std::move(error));
        },
        transfer);
  }

 private:
  static void send(Transport& transport, const std::string& address, Transport::Reader read,
                   Transport::Completion complete, const std::shared_ptr<Transfer>& transfer) {
    if (transfer == nullptr) return transport.get(address, read, std::move(complete));
    // Made beforehand: a completion has no way to say that there was no memory for it.
    const std::string shown = shownAddress(address);
    transport.follow(
        address, read,
        [complete = std::move(complete), transfer,
         cancelled =
             ResponseError{ResponseError::Kind::cancelled, shown, shown + ": cancelled", 0}](
            std::shared_ptr<MappableModel> record, std::optional<ResponseError> error) mutable {
          if (!transfer->isCancelled()) return complete(std::move(record), std::move(error));
          complete(nullptr, std::move(cancelled));
        },
        transfer);
  }

  template <class Record>
  static std::shared_ptr<MappableModel> read(const MapSource& object) {
    return Mapper<Record>::map(object);
  }
};

}  // namespace fexora
