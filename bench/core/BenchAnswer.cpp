// The service's answer read into records, against a parser that only takes the codes and doubles.
#include <simdjson.h>

#include "fexora/platform/foundation/NumberText.h"
#include "fexora/platform/modules/net/JsonValue.h"

#include "bench/core/Bench.h"
#include "bench/support/Race.h"

namespace fexora::bench {
namespace {

std::string answerOf(const World& world) {
  std::string text = R"({"serviceMessage":"","updated":1790640000,"source":"x","rates":[)";
  for (std::size_t i = 0; i < world.codes.size(); ++i) {
    if (i > 0) text += ',';
    text += R"({"code":")" + world.codes[i] + R"(","rate":)";
    appendShortestText(text, world.values[i]);
    text += '}';
  }
  return text + "]}";
}

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
  Race race("the service's answer into records, n = " + std::to_string(world.codes.size()));
  race.add("simdjson reading codes and doubles", [&] { return simdjsonOnly(parser, text); });
  race.add("decoded and mapped into a Response", [&] {
    const auto response = Mapper<Response>::map(decodeJson(text).root);
    return static_cast<double>(response->rates().size());
  });
  race.run();
}

}  // namespace fexora::bench
