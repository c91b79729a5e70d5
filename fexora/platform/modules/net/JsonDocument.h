// A JSON text on its way into a record, without a tree of Values in between.
//
// Reads what decodeJson reads and refuses what it refuses (see JsonValue.h), in a quarter of the
// time for a list of rates. One thread at a time. Nothing throws but for memory that cannot be had.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "fexora/platform/mapping/MapSource.h"
#include "fexora/platform/modules/net/JsonValue.h"

namespace fexora {

class JsonDocument {
 public:
  explicit JsonDocument(std::string_view text);
  JsonDocument(const JsonDocument&) = delete;
  JsonDocument& operator=(const JsonDocument&) = delete;
  ~JsonDocument();

  JsonResult::State state() const noexcept { return decoded_.state; }
  // For people, unless the text is a value.
  const std::string& reason() const noexcept { return decoded_.reason; }
  // The object at the root; null when there is none. Valid as long as this document.
  const MapSource* object() const noexcept { return object_.get(); }

 private:
  class Parsed;

  std::unique_ptr<Parsed> parsed_;  // null when the slower decoder had to read the text
  JsonResult decoded_;
  std::unique_ptr<MapSource> object_;
};

}  // namespace fexora
