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

#include "fexora/platform/mapping/MapSource.h"

namespace fexora {

template <class Record>
class Mapper;

class FEXORA_API Map {
 public:
  // Reads from `source`, which outlives the map.
  static Map reading(const MapSource& source) { return Map(&source); }
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

  // What has been written since it was last taken or cleared.
  const std::vector<Dictionary::Entry>& written() const noexcept { return written_; }
  void clear() noexcept { written_.clear(); }
  Dictionary takeResult() {
    Dictionary result = Dictionary::fromEntries(written_);
    written_.clear();
    return result;
  }

 private:
  explicit Map(const MapSource* source) noexcept : source_(source) {}

  void write(const char* key, Value value) { written_.emplace_back(key, std::move(value)); }

  const MapSource* source_;  // null when writing
  std::vector<Dictionary::Entry> written_;
};

template <class Record>
void Map::bind(const char* key, std::shared_ptr<Record>& field) {
  if (isReading()) {
    source_->visitDictionary(key, [&field](const MapSource& dictionary, std::size_t /*left*/) {
      if (auto record = Mapper<Record>::map(dictionary)) field = std::move(record);
    });
  } else if (field != nullptr) {
    write(key, Mapper<Record>::toJSON(*field));
  }
}

template <class Record>
void Map::bind(const char* key, std::vector<std::shared_ptr<Record>>& field) {
  if (isReading()) {
    typename Mapper<Record>::List list;
    if (source_->visitDictionaries(key, list.visitor())) field = std::move(list).take();
  } else {
    write(key, Mapper<Record>::toJSONArray(field));
  }
}

template <class Field, class Transform>
void Map::bind(const char* key, Field& field, Transform transform) {
  if (isReading()) {
    Value scratch;
    auto result = transform.transformFromJSON(source_->find(key, scratch));
    if (result) field = std::move(*result);
  } else if (auto json = transform.transformToJSON(field)) {
    write(key, Value(std::move(*json)));
  }
}

}  // namespace fexora
