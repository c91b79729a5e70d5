#include "fexora/platform/mapping/MappableModel.h"

#include <functional>

#include "fexora/platform/mapping/Map.h"

namespace fexora {

MappableModel::~MappableModel() = default;

std::size_t MappableModel::hashValue() const {
  return std::hash<const void*>()(this);
}

std::string MappableModel::description() const {
  return "<MappableModel>";
}

bool MappableModel::initWithMap(Map& /*map*/) {
  return true;
}

void MappableModel::mapping(Map& /*map*/) {}

bool MappableModel::isEqualTo(const MappableModel& object) const {
  return this == &object;
}

void MappableModel::mapping(const MappableModel& object) {
  const Value json = jsonOf(object);
  const DictionarySource source(*json.dictionary());
  Map map = Map::reading(source);
  mapping(map);
}

Value jsonOf(const MappableModel& record) {
  Map map = Map::writing();
  return jsonOf(record, map);
}

Value jsonOf(const MappableModel& record, Map& map) {
  writeInto(map, record);
  return map.takeResult();
}

void writeInto(Map& map, const MappableModel& record) {
  // One `mapping` serves both ways, so it cannot be const; a writing map only reads the fields.
  const_cast<MappableModel&>(record).mapping(map);  // NOLINT(cppcoreguidelines-pro-type-const-cast)
}

}  // namespace fexora
