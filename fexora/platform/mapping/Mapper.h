// Makes records from JSON values and JSON values from records.
//
// `Record` is a default-constructible MappableModel. Any thread, as far as the records allow.
#pragma once

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "fexora/platform/mapping/Map.h"
#include "fexora/platform/mapping/MappableModel.h"

namespace fexora {

template <class Record>
class Mapper {
 public:
  // Null when the value is no dictionary or the record refuses it.
  static std::shared_ptr<Record> map(const Value& value) {
    const Dictionary* source = value.dictionary();
    if (source == nullptr) return nullptr;
    auto record = std::make_shared<Record>();
    Map map = Map::reading(*source);
    if (!record->initWithMap(map)) return nullptr;
    record->mapping(map);
    return record;
  }

  // Nothing unless the value is a list of dictionaries only; dictionaries that do not map are left
  // out, the others keep their order.
  static std::optional<std::vector<std::shared_ptr<Record>>> mapArray(const Value& value) {
    const Array* elements = value.array();
    if (elements == nullptr) return std::nullopt;
    for (const Value& element : *elements) {
      if (element.dictionary() == nullptr) return std::nullopt;
    }
    std::vector<std::shared_ptr<Record>> records;
    records.reserve(elements->size());
    for (const Value& element : *elements) {
      if (auto record = map(element)) records.push_back(std::move(record));
    }
    return records;
  }

  static Value toJSON(const Record& record) { return jsonOf(record); }
  // A null reference gives the null value.
  static Value toJSON(const std::shared_ptr<Record>& record) {
    return record != nullptr ? jsonOf(*record) : Value();
  }

  // Null references are skipped.
  static Value toJSONArray(const std::vector<std::shared_ptr<Record>>& records) {
    Array elements;
    elements.reserve(records.size());
    for (const auto& record : records) {
      if (record != nullptr) elements.push_back(jsonOf(*record));
    }
    return elements;
  }
};

}  // namespace fexora
