// What the tests of the network layer share: a transport on the process's run loop, asked one thing
// at a time, while a timer ticks to show whether the loop ever stood still.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "fexora/platform/network/NetworkManager.h"
#include "fexora/platform/network/curl/CurlTransport.h"
#include "fexora/records/USDRate.h"

#include "tests/support/FaultServer.h"
#include "tests/support/ScratchFolder.h"

namespace fexora::test {

// Keeps the lines. Any thread.
class LineLog final : public Log {
 public:
  void write(std::string_view line) override;
  std::vector<std::string> lines() const;

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> lines_;
};

// What the tests' answers hold.
class Answer final : public MappableModel {
 public:
  std::string serviceMessage;
  NSNumber a;
  std::vector<USDRateRef> rates;
  void mapping(Map& map) override {
    map.bind("serviceMessage", serviceMessage);
    map.bind("a", a);
    map.bind("rates", rates);
  }
};

struct Outcome {
  int completions = 0;
  std::shared_ptr<Answer> record;
  std::optional<ResponseError> error;
  int ticks = 0;            // of a timer of one millisecond, while the request ran
  double longestStall = 0;  // seconds by which a tick came late, at most
};

class NetworkTest : public testing::Test {
 protected:
  NetworkTest();
  ~NetworkTest() override;

  // Made at first use, from `options` as it is then.
  CurlTransport& transport();
  void endTransport() { transport_.reset(); }

  // Runs the loop until the request has completed, and once more for what may follow.
  Outcome ask(const std::string& address);
  Outcome askServer(const std::string& bytes);  // a server that answers with these

  NetOptions options;
  FaultServer server;
  ScratchFolder scratch;
  LineLog log;

 private:
  std::unique_ptr<CurlTransport> transport_;
  double longestStall_ = 0;
};

// What one answer may cost in memory, whatever it holds. Sanitizers keep freed memory for a while.
inline constexpr std::size_t kMemoryBound = std::size_t{FEXORA_TEST_SANITIZED ? 768 : 192} << 20;

// The most memory that the process has held since the start of the measurement, beyond what it held
// then, in bytes.
class PeakMemory {
 public:
  PeakMemory();
  std::size_t growth() const;

 private:
  std::size_t before_;
};

}  // namespace fexora::test
