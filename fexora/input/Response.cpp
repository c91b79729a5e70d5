#include "fexora/input/Response.h"

#include "fexora/platform/mapping/Map.h"
#include "fexora/platform/mapping/Mapper.h"

namespace fexora {

void Response::mapping(Map& map) {
  map.bind("serviceMessage", serviceMessage_);
  map.bind("updated", updated_);
  map.bind("source", source_);
  map.bind("count", count_);
  map.bind("rates", rates_);
}

}  // namespace fexora
