#include "fexora/records/Response.h"

#include "fexora/platform/mapping/Map.h"
#include "fexora/platform/mapping/Mapper.h"
#include "fexora/platform/text/OneLine.h"

namespace fexora {
namespace {

// 2000-01-01 and 2101-01-01: no count of days, minutes or milliseconds lies between them.
constexpr double kFirstMoment = 946'684'800;
constexpr double kEndOfMoments = 4'133'980'800;

}  // namespace

std::optional<Date> Response::published() const {
  constexpr double kMilliseconds = 1000;
  double seconds = updated().doubleValue();
  if (seconds >= kFirstMoment * kMilliseconds) seconds /= kMilliseconds;
  if (!(seconds >= kFirstMoment && seconds < kEndOfMoments)) return std::nullopt;
  return Date(seconds);
}

void Response::mapping(Map& map) {
  map.bind("serviceMessage", serviceMessage_);
  map.bind("updated", updated_);
  map.bind("source", source_);
  map.bind("count", count_);
  map.bind("rates", rates_);
  if (!map.isReading()) return;
  makeOneLine(serviceMessage_);
  makeOneLine(source_);
}

}  // namespace fexora
