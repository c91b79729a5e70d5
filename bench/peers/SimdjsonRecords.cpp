// simdjson with a shared record allocated for each rate: the least that a list of records takes.
#include <simdjson.h>

#include "bench/support/Peers.h"

namespace fexora::bench {
namespace {

struct Record {
  virtual ~Record() = default;
  std::string code;
  double rate = 0;
};

const Peers<AnswerJob> json([](Race& race, const AnswerJob& job) {
  const auto parser = std::make_shared<simdjson::dom::parser>();
  race.add("simdjson, a record allocated for each rate", [parser, &job] {
    std::vector<std::shared_ptr<Record>> records;
    const simdjson::dom::array rates = parser->parse(job.text)["rates"].get_array().value();
    for (const simdjson::dom::element rate : rates) {
      records.push_back(std::make_shared<Record>());
      records.back()->code = rate["code"].get_string().value();
      records.back()->rate = rate["rate"].get_double().value();
    }
    return records.back()->rate;
  });
});

}  // namespace
}  // namespace fexora::bench
