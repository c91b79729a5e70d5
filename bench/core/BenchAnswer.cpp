// The service's answer read into records, against a parser that only takes the codes and doubles.
#include <simdjson.h>

#include "fexora/platform/json/simdjson/JsonDocument.h"

#include "bench/core/Bench.h"
#include "bench/support/Peers.h"

namespace fexora::bench {
namespace {

double simdjsonOnly(simdjson::dom::parser& parser, const std::string& text) {
  double sum = 0;
  const simdjson::dom::element root = parser.parse(text).value();
  const simdjson::dom::array rates = root["rates"].get_array().value();
  for (const simdjson::dom::element rate : rates) {
    const std::string_view code = rate["code"].get_string().value();
    sum += rate["rate"].get_double().value() + static_cast<double>(code.size());
  }
  return sum;
}

}  // namespace

void benchAnswer(const World& world) {
  const std::string text = answerOf(world);
  simdjson::dom::parser parser;
  Race race("the service's answer into records", world.codes.size());
  race.add("simdjson reading codes and doubles", [&] { return simdjsonOnly(parser, text); });
  race.add("decoded and mapped into a Response", [&] {
    const JsonDocument document(text);
    const auto response = Mapper<Response>::map(*document.object());
    return static_cast<double>(response->rates().size());
  });
  const AnswerJob job{text};
  Peers<AnswerJob>::enter(race, job);
  race.run();
}

}  // namespace fexora::bench
