// The C library: one conversion, many, and what a session costs. The limit is what a program could
// do at best that had the rates in its own hand.
#include <array>
#include <unordered_map>
#include <vector>

#include "fexora/c.h"
#include "fexora/rates/BundledRates.h"

#include "bench/support/Race.h"

namespace fexora::bench {
namespace {

constexpr int kBatch = 100;
constexpr std::size_t kMany = 1'000'000;

fexora_session* opened() {
  fexora_session* session = nullptr;
  fexora_open("", 0, &session, nullptr);
  return session;
}

void one(fexora_session* session) {
  std::unordered_map<std::string, double> rates;
  for (const auto& rate : bundledUSDRates()) {
    rates.emplace(rate->code(), rate->rate().doubleValue());
  }
  const auto converted = [session](const char* from, const char* to) {
    double sum = 0;
    double result = 0;
    for (int i = 0; i < kBatch; ++i) {
      fexora_convert(session, i, from, to, &result, nullptr);
      sum += result;
    }
    return sum;
  };
  Race race("one conversion, C");
  race.add(
      "a hash table of rates by code",
      [&] {
        double sum = 0;
        for (int i = 0; i < kBatch; ++i) sum += i * (rates.at("JPY") / rates.at("EUR"));
        return sum;
      },
      kBatch);
  race.add(
      "fexora_convert", [&] { return converted("EUR", "JPY"); }, kBatch);
  race.add(
      "fexora_convert, codes in small letters", [&] { return converted("eur", "jpy"); }, kBatch);
  race.run();
}

void many(fexora_session* session) {
  std::vector<double> amounts(kMany);
  std::vector<double> results(kMany);
  for (std::size_t i = 0; i < kMany; ++i) amounts[i] = static_cast<double>(i);
  double rate = 0;
  fexora_rate(session, "EUR", "JPY", &rate, nullptr, nullptr);
  Race race("many amounts, C", kMany);
  race.add("a bare loop", [&] {
    for (std::size_t i = 0; i < kMany; ++i) results[i] = amounts[i] * rate;
    return results[kMany / 2];
  });
  race.add("fexora_convert_amounts", [&] {
    fexora_convert_amounts(session, amounts.data(), kMany, "EUR", "JPY", results.data(), nullptr);
    return results[kMany / 2];
  });
  race.run();
}

void whole(fexora_session* session) {
  std::array<const char*, 512> codes{};
  std::array<double, 512> results{};
  std::size_t count = 0;
  fexora_codes(session, codes.data(), codes.size(), &count, nullptr);
  Race race("what else a session does, C");
  race.add("into all currencies", [&] {
    fexora_convert_to(session, 1, "EUR", codes.data(), count, results.data(), nullptr);
    return results[count / 2];
  });
  race.add("look", [&] {
    int changed = 0;
    fexora_look(session, &changed, nullptr);
    return double{0} + changed;
  });
  race.add("open and close in memory", [] {
    fexora_session* other = opened();
    fexora_close(other);
    return 1.0;
  });
  race.run();
}

}  // namespace
}  // namespace fexora::bench

int main() {
  fexora_session* const session = fexora::bench::opened();
  if (session == nullptr) return 1;
  fexora::bench::one(session);
  fexora::bench::many(session);
  fexora::bench::whole(session);
  fexora_close(session);
}
