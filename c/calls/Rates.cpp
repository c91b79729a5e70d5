#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "fexora/c.h"

#include "c/Fetch.h"
#include "c/calls/Checked.h"

using namespace fexora::c;

namespace {

using fexora::Freshness;
using fexora::RatesAnswer;
using fexora::Response;
using fexora::USDRate;

double momentOf(const std::optional<fexora::Date>& date) {
  return date ? date->secondsSince1970() : std::nan("");
}

int32_t originOf(Freshness::Origin origin) {
  switch (origin) {
    case Freshness::Origin::bundled:
      return FEXORA_ORIGIN_BUNDLED;
    case Freshness::Origin::service:
      return FEXORA_ORIGIN_SERVICE;
    case Freshness::Origin::file:
      return FEXORA_ORIGIN_FILE;
    case Freshness::Origin::none:
      break;
  }
  return FEXORA_ORIGIN_NONE;
}

int32_t stateOf(Freshness::State state) {
  switch (state) {
    case Freshness::State::fresh:
      return FEXORA_STATE_FRESH;
    case Freshness::State::stale:
      return FEXORA_STATE_STALE;
    case Freshness::State::old:
      return FEXORA_STATE_OLD;
    case Freshness::State::none:
      break;
  }
  return FEXORA_STATE_NONE;
}

Outcome answerOf(const char* const* codes, const double* rates, size_t count, Response& answer) {
  std::vector<fexora::USDRateRef> list = {USDRate::make(1.0, "USD")};
  for (size_t i = 0; i < count; ++i) {
    std::uint32_t place = 0;
    Outcome outcome = Codes::all().find(codes[i], place);
    if (!outcome.isOk()) return outcome;
    const std::string code = Codes::all()[place];
    if (!(rates[i] > 0) || !std::isfinite(rates[i]) || (code == "USD" && rates[i] != 1)) {
      return {FEXORA_REFUSED, code + ": expected a finite number above zero" +
                                  (code == "USD" ? ", of the dollar itself 1" : "")};
    }
    if (code != "USD") list.push_back(USDRate::make(rates[i], code));
  }
  answer.setCount(list.size());
  answer.setRates(std::move(list));
  return {};
}

}  // namespace

int fexora_get_freshness(fexora_session* session, fexora_freshness* freshness, size_t size,
                         fexora_error* error) {
  return withSession(session, error, [&] {
    const Freshness fresh = session->freshness();
    fexora_freshness found{};
    found.state = stateOf(fresh.state);
    found.origin = originOf(fresh.origin);
    found.count = static_cast<int32_t>(session->rates()->codes().size());
    found.published = momentOf(fresh.published);
    found.stored = momentOf(fresh.stored);
    putText(fresh.source, found.source, sizeof found.source);
    return give(found, freshness, size);
  });
}

int fexora_codes(fexora_session* session, const char** codes, size_t capacity, size_t* count,
                 fexora_error* error) {
  return withSession(session, error,
                     [&] { return giveCodes(session->rates()->codes(), codes, capacity, count); });
}

int fexora_set_rates(fexora_session* session, const char* const* codes, const double* rates,
                     size_t count, double published, const char* source, fexora_error* error) {
  return withSession(session, error, [&] {
    if (count == 0 || codes == nullptr || rates == nullptr) return misuse("no rates are given");
    Response answer;
    Outcome outcome = answerOf(codes, rates, count, answer);
    if (!outcome.isOk()) return outcome;
    if (std::isfinite(published)) answer.setUpdated(published);
    if (source != nullptr) answer.setSource(source);
    return session->take(answer, RatesAnswer::Origin::file);
  });
}

int fexora_read_rates(fexora_session* session, const char* text, size_t size, fexora_error* error) {
  return withSession(session, error, [&] {
    if (text == nullptr) return misuse("no text is given");
    std::vector<fexora::RatesTable> tables;
    Outcome outcome = readTables("the text", std::string(text, size), tables);
    return outcome.isOk() ? session->take(std::move(tables)) : outcome;
  });
}

int fexora_refresh(fexora_session* session, const char* from, double seconds, fexora_error* error) {
  return withSession(session, error, [&] {
    if (!(seconds >= 0)) return misuse("seconds are 0 or more");
    if (from != nullptr && *from == '\0') return misuse("no source is named");
    return refreshRates(*session, from, seconds);
  });
}

void fexora_cancel(fexora_session* session) {
  if (session != nullptr && session->isOfThisProcess()) session->cancel();
}
