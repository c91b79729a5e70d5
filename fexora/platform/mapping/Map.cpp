#include "fexora/platform/mapping/Map.h"

namespace fexora {

void Map::bind(const char* key, std::string& field) {
  if (!isReading()) return write(key, Value(field));
  source_->readText(key, field);
}

void Map::bind(const char* key, NSNumber& field) {
  if (!isReading()) return write(key, Value(field));
  Value scratch;
  const Value* value = source_->find(key, scratch);
  if (value != nullptr && value->number() != nullptr) field = *value->number();
}

}  // namespace fexora
