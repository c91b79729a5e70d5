// The base of the records that have a JSON form.
//
// Equality is each record's own (`isEqualTo`); `==` asks it. Not guarded: a record is used by one
// thread at a time, but may be read by several while nobody changes it.
#pragma once

#include <cstdint>
#include <string>

#include "fexora/platform/base/Export.h"
#include "fexora/platform/values/Value.h"

namespace fexora {

class Map;

class FEXORA_API MappableModel {
 public:
  MappableModel() = default;
  MappableModel(const MappableModel&) = default;
  MappableModel& operator=(const MappableModel&) = default;
  virtual ~MappableModel();

  // A number for the host's own use; the library neither sets nor reads it.
  virtual std::int64_t id() const { return id_; }
  virtual void setId(std::int64_t id) { id_ = id; }

  // Equal records have equal values. In the base, records are equal when they are one object.
  virtual std::size_t hashValue() const;
  virtual std::string description() const;

  // Called once on a new record before `mapping` reads into it; false rejects the dictionary, and
  // no record is made of it.
  virtual bool initWithMap(Map& map);
  // Binds the record's keys to its fields.
  virtual void mapping(Map& map);
  virtual bool isEqualTo(const MappableModel& object) const;
  // Takes over what the JSON form of `object` holds under this record's keys.
  virtual void mapping(const MappableModel& object);

  friend bool operator==(const MappableModel& a, const MappableModel& b) { return a.isEqualTo(b); }

 private:
  std::int64_t id_ = 0;
};

// The record's JSON dictionary.
FEXORA_API Value jsonOf(const MappableModel& record);
// The same by a map that writes, for many records in turn; or into the map alone.
FEXORA_API Value jsonOf(const MappableModel& record, Map& map);
FEXORA_API void writeInto(Map& map, const MappableModel& record);

}  // namespace fexora
