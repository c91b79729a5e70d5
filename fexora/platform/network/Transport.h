// Sends one request and brings what its answer, a JSON object or any text, was read into.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "fexora/platform/mapping/MapSource.h"
#include "fexora/platform/mapping/MappableModel.h"
#include "fexora/platform/network/ResponseError.h"
#include "fexora/platform/network/Transfer.h"

namespace fexora {

// The record of an answer that is taken as it came.
class FEXORA_API TextAnswer : public MappableModel {
 public:
  explicit TextAnswer(std::string text) : text_(std::move(text)) {}
  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

class FEXORA_API Transport {
 public:
  // Makes a record of the answer's object, or null. Called at most once, on any thread, before the
  // completion; the record is the main thread's from then on. JSON true and false are the numbers
  // 1 and 0.
  using Reader = std::shared_ptr<MappableModel> (*)(const MapSource& object);
  // What the reader made, or the error; see NetworkManager for what both or neither mean.
  using Completion =
      std::function<void(std::shared_ptr<MappableModel>, std::optional<ResponseError>)>;

  Transport() = default;
  Transport(const Transport&) = delete;
  Transport& operator=(const Transport&) = delete;
  virtual ~Transport();

  // Returns at once, whatever the network does; `complete` is called later, once, on the main
  // thread. An answer whose root is no object is an error of kind notAnObject. With a null reader
  // any answer is taken, and the record is a TextAnswer. Main thread.
  virtual void get(const std::string& address, Reader read, Completion complete) = 0;

  // The same, with `transfer` (null: as get) told of the answer while it comes. Once it is
  // cancelled nothing more is sent or received, and when that is so the request completes, with
  // whatever outcome. By itself this is get(): the transport of a host that has no better neither
  // tells nor ends anything.
  virtual void follow(const std::string& address, Reader read, Completion complete,
                      const std::shared_ptr<Transfer>& transfer);

  // The library's own, and the one that the process uses: see Platform::process().
  static Transport& builtIn();
  static Transport& process();
};

}  // namespace fexora
