// Makes records from JSON values and JSON values from records.
//
// `Record` is a default-constructible MappableModel. Any thread, as far as the records allow.
#pragma once

#include <concepts>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "fexora/platform/mapping/Map.h"
#include "fexora/platform/mapping/MappableModel.h"
#include "fexora/platform/plist/LaidOutRecordsWriter.h"

namespace fexora {

template <class Record>
class Mapper {
 public:
  // Records of one list, as they are read. They share one block, which goes with the last of them,
  // unless they give out references to themselves and so must be allocated one by one.
  class List {
   public:
    MapSource::Visitor visitor() {
      return [this](const MapSource& dictionary, std::size_t left) {
        if (references_.empty()) references_.reserve(left);
        if constexpr (std::derived_from<Record, std::enable_shared_from_this<Record>>) {
          if (auto record = map(dictionary)) references_.push_back(std::move(record));
        } else {
          addToBlock(dictionary, left);
        }
      };
    }
    std::vector<std::shared_ptr<Record>> take() && { return std::move(references_); }

   private:
    void addToBlock(const MapSource& dictionary, std::size_t left) {
      if (block_ == nullptr) {
        block_ = std::make_shared<std::vector<Record>>();
        block_->reserve(left);
      }
      Record& record = block_->emplace_back();
      if (read(dictionary, record)) {
        references_.emplace_back(block_, &record);
      } else {
        block_->pop_back();
      }
    }

    std::shared_ptr<std::vector<Record>> block_;
    std::vector<std::shared_ptr<Record>> references_;
  };

  // Null when the record rejects the dictionary.
  static std::shared_ptr<Record> map(const MapSource& source) {
    auto record = std::make_shared<Record>();
    return read(source, *record) ? record : nullptr;
  }
  // Null also when the value is no dictionary.
  static std::shared_ptr<Record> map(const Value& value) {
    const Dictionary* source = value.dictionary();
    return source != nullptr ? map(DictionarySource(*source)) : nullptr;
  }

  // Nothing unless the value is a list of dictionaries only; dictionaries that do not map are left
  // out, the others keep their order.
  static std::optional<std::vector<std::shared_ptr<Record>>> mapArray(const Value& value) {
    List list;
    if (!visitDictionaries(value, list.visitor())) return std::nullopt;
    return std::move(list).take();
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
    Map map = Map::writing();
    for (const auto& record : records) {
      if (record != nullptr) elements.push_back(jsonOf(*record, map));
    }
    return elements;
  }
  // The same for a value of a property list's root: the bytes of it, where that can be (see
  // plist/LaidOutRecordsWriter.h).
  static Value toRootArray(const std::vector<std::shared_ptr<Record>>& records) {
    constexpr std::size_t kDepth = 2;  // the root and the list
    LaidOutRecordsWriter writer(kDepth, records.size());
    Map map = Map::writing();
    for (const auto& record : records) {
      if (record == nullptr) continue;
      writeInto(map, *record);
      if (!writer.add(map.written())) return toJSONArray(records);
      map.clear();
    }
    std::shared_ptr<const DeferredList> list = writer.take();
    return list != nullptr ? Value(std::move(list)) : toJSONArray(records);
  }

 private:
  // False when the record rejects the dictionary.
  static bool read(const MapSource& source, Record& record) {
    Map map = Map::reading(source);
    if (!record.initWithMap(map)) return false;
    record.mapping(map);
    return true;
  }
};

}  // namespace fexora
