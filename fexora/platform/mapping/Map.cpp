#include "fexora/platform/mapping/Map.h"

namespace fexora {

void Map::bind(const char* key, std::string& field) {
  if (!isReading()) return write(key, Value(field));
  const Value* value = find(key);
  if (value != nullptr && value->string() != nullptr) field = *value->string();
}

void Map::bind(const char* key, NSNumber& field) {
  if (!isReading()) return write(key, Value(field));
  const Value* value = find(key);
  if (value != nullptr && value->number() != nullptr) field = *value->number();
}

}  // namespace fexora
