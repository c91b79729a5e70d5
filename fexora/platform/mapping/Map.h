// One record and its JSON dictionary, on the way in or out.
//
// A record's `mapping` binds each key to a field; the same bindings read and write. Reading, a
// field takes the value when the key is present and its value is of the field's type, else it keeps
// what it had. Writing, the field's value goes under the key. Lives for one call of `mapping`; used
// by its thread only.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fexora/platform/foundation/Value.h"

namespace fexora {

template <class Record>
class Mapper;

class FEXORA_API Map {
 public:
  // Reads from `source`, which outlives the map.
  static Map reading(const Dictionary& source) { return Map(&source); }
  static Map writing() { return Map(nullptr); }

  bool isReading() const noexcept { return source_ != nullptr; }

  // A string.
  void bind(const char* key, std::string& field);
  // A number of any kind, unchanged.
  void bind(const char* key, NSNumber& field);
  // A nested record; null is not written.
  template <class Record>
  void bind(const char* key, std::shared_ptr<Record>& field);
  // A list of records: taken when the value is a list of dictionaries only; a dictionary for which
  // no record can be made is left out.
  template <class Record>
  void bind(const char* key, std::vector<std::shared_ptr<Record>>& field);
  // Through a transform (see TransformType.h): the field takes its result when there is one.
  template <class Field, class Transform>
  void bind(const char* key, Field& field, Transform transform);

  // What has been written.
  Dictionary result() && { return Dictionary::fromEntries(written_); }

 private:
  explicit Map(const Dictionary* source) noexcept : source_(source) {}

  const Value* find(const char* key) const noexcept { return source_->find(key); }
  void write(const char* key, Value value) { written_.emplace_back(key, std::move(value)); }

  const Dictionary* source_;  // null when writing
  std::vector<Dictionary::Entry> written_;
};

template <class Record>
void Map::bind(const char* key, std::shared_ptr<Record>& field) {
  if (isReading()) {
    const Value* value = find(key);
    if (value == nullptr) return;
    if (auto record = Mapper<Record>::map(*value)) field = std::move(record);
  } else if (field != nullptr) {
    write(key, Mapper<Record>::toJSON(*field));
  }
}

template <class Record>
void Map::bind(const char* key, std::vector<std::shared_ptr<Record>>& field) {
  if (isReading()) {
    const Value* value = find(key);
    if (value == nullptr) return;
    if (auto list = Mapper<Record>::mapArray(*value)) field = std::move(*list);
  } else {
    write(key, Mapper<Record>::toJSONArray(field));
  }
}

template <class Field, class Transform>
void Map::bind(const char* key, Field& field, Transform transform) {
  if (isReading()) {
    if (auto result = transform.transformFromJSON(find(key))) field = std::move(*result);
  } else if (auto json = transform.transformToJSON(field)) {
    write(key, Value(std::move(*json)));
  }
}

}  // namespace fexora
