// A publisher's source in any of its formats: rejected with a message, or published in an answer
// that the library reads and the publisher takes for its own.
#include <cmath>
#include <string>
#include <vector>

#include "fuzz/Target.h"
#include "programs/fexora-publish/Publication.h"
#include "programs/fexora-publish/Rejection.h"
#include "tests/support/JsonRoot.h"

namespace fexora::fuzz {
namespace {

const Date kUndated(1'790'640'000);

void checkAnswer(const publish::MergedRates& rates, const std::string& answer) {
  const auto json = test::jsonRoot(answer);
  require(json.has_value(), "what is published is JSON");
  const Value* list = json->dictionary()->find("rates");
  require(list->array()->size() == rates.size(), "every rate is published");
  for (const Value& element : *list->array()) {
    const Dictionary& rate = *element.dictionary();
    const auto known = rates.find(*rate.find("code")->string());
    require(known != rates.end(), "codes are published as they are");
    require(rate.find("rate")->number()->doubleValue() == known->second.rate,
            "rates are published bit for bit");
    require(std::isfinite(known->second.rate) && known->second.rate > 0,
            "a published rate is finite and positive");
  }
}

template <class Check>
bool isRejected(Check check) {
  try {
    check();
    return false;
  } catch (const publish::Rejection&) {
    return true;
  }
}

void publishOne(const std::string& text) {
  const std::vector<publish::Source> sources{sources::readText("source", text, kUndated)};
  const auto rates = sources::merge(sources);
  publish::Options options;
  publish::checkCount(options, rates);
  const std::string answer = publish::answerText(sources, rates);
  checkAnswer(rates, answer);
  publish::checkAge(options, sources.front(), kUndated);
  options.maxJump = 0;
  const auto compare = [&] { publish::checkChange(options, sources, rates, answer, kUndated); };
  require(rates.size() == 1 || !isRejected(compare), "rates are no jump away from themselves");
  options.maxAge = 1;
  const bool isOld = isRejected([&] { publish::checkAge(options, sources.front(), kUndated); });
  require(!isOld || sources.front().date != kUndated, "rates of today are not too old");
}

void run(std::string_view text) {
  try {
    publishOne(std::string(text));
  } catch (const publish::Rejection& rejection) {
    require(!rejection.message.empty(), "a rejection says why");
    require(rejection.exit == publish::Exit::rejected, "a bad source is rejected");
  } catch (const sources::SourceProblem& problem) {
    require(!problem.message.empty(), "a rejection says why");
  }
}

}  // namespace
}  // namespace fexora::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fexora::fuzz::run(fexora::fuzz::textOf(data, size));
  return 0;
}
