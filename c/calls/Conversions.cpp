#include <cmath>
#include <vector>

#include "fexora/c.h"

#include "c/calls/Checked.h"

using namespace fexora::c;

namespace {

Outcome pairNamed(const fexora_session& session, const char* from, const char* to,
                  DollarRates::Pair& found) {
  std::uint32_t source = 0;
  std::uint32_t destination = 0;
  const Codes& codes = Codes::all();
  Outcome outcome = codes.find(from, source);
  if (outcome.isOk()) outcome = codes.find(to, destination);
  if (outcome.isOk()) outcome = session.rates()->pair(source, destination, found);
  return outcome;
}

int32_t howOf(fexora::PastRate::How how) {
  switch (how) {
    case fexora::PastRate::How::crossed:
      return FEXORA_HOW_CROSSED;
    case fexora::PastRate::How::byLaw:
      return FEXORA_HOW_BY_LAW;
    case fexora::PastRate::How::printed:
      break;
  }
  return FEXORA_HOW_PRINTED;
}

}  // namespace

int fexora_rate(fexora_session* session, const char* from, const char* to, double* rate,
                double* published, fexora_error* error) {
  return withSession(session, error, [&] {
    if (rate == nullptr) return misuse("no place for the rate");
    DollarRates::Pair pair{};
    Outcome outcome = pairNamed(*session, from, to, pair);
    if (!outcome.isOk()) return outcome;
    *rate = pair.rate;
    if (published != nullptr) *published = pair.published;
    return outcome;
  });
}

int fexora_convert(fexora_session* session, double amount, const char* from, const char* to,
                   double* result, fexora_error* error) {
  return fexora_convert_amounts(session, &amount, 1, from, to, result, error);
}

int fexora_convert_amounts(fexora_session* session, const double* amounts, size_t count,
                           const char* from, const char* to, double* results, fexora_error* error) {
  return withSession(session, error, [&] {
    if (count > 0 && (amounts == nullptr || results == nullptr)) {
      return misuse("no amounts, or no place for the results");
    }
    DollarRates::Pair pair{};
    Outcome outcome = pairNamed(*session, from, to, pair);
    if (!outcome.isOk()) return outcome;
    for (size_t i = 0; i < count; ++i) results[i] = amounts[i] * pair.rate;
    return outcome;
  });
}

int fexora_convert_to(fexora_session* session, double amount, const char* from,
                      const char* const* to, size_t count, double* results, fexora_error* error) {
  return withSession(session, error, [&] {
    if (count > 0 && (to == nullptr || results == nullptr)) {
      return misuse("no codes, or no place for the results");
    }
    const Codes& codes = Codes::all();
    std::uint32_t source = 0;
    Outcome outcome = codes.find(from, source);
    std::vector<std::uint32_t> places(count);
    for (size_t i = 0; i < count && outcome.isOk(); ++i) outcome = codes.find(to[i], places[i]);
    if (!outcome.isOk()) return outcome;
    const SessionRatesRef rates = session->rates();
    for (size_t i = 0; i < count; ++i) {
      DollarRates::Pair pair{};
      const bool hasRate = rates->pair(source, places[i], pair).isOk();
      results[i] = hasRate ? amount * pair.rate : std::nan("");
    }
    return outcome;
  });
}

int fexora_rate_on(fexora_session* session, const char* day, const char* from, const char* to,
                   const char* source, int at_most_before, fexora_past* past, size_t size,
                   fexora_error* error) {
  return withSession(session, error, [&] {
    if (day == nullptr) return misuse("no day is given");
    std::uint32_t first = 0;
    std::uint32_t second = 0;
    Outcome outcome = Codes::all().find(from, first);
    if (outcome.isOk()) outcome = Codes::all().find(to, second);
    fexora::PastQuestion question;
    if (source != nullptr) question.sources.emplace_back(source);
    if (at_most_before >= 0) question.atMostBefore = at_most_before;
    fexora::PastRate rate;
    if (outcome.isOk()) outcome = session->on(day, first, second, question, rate);
    if (!outcome.isOk()) return outcome;
    fexora_past found{};
    found.rate = rate.rate;
    found.how = howOf(rate.how);
    putText(fexora::isoText(rate.day), found.day, sizeof found.day);
    putText(rate.source, found.source, sizeof found.source);
    return give(found, past, size);
  });
}
