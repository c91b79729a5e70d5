// Two stores in one process, each with its own rates, folder, loop and thread.
#include <cstdio>
#include <string>
#include <thread>

#include "PollLoop.h"

using namespace fexora;

class Desk {
 public:
  explicit Desk(const std::string& folder) : store_(platform_, &currencyManager(), folder) {
    seedBundledRates(store_);
    rates_.loadStoredRates();
  }

  // What one dollar is in euros, by a rate that is noted here and saved.
  void note(double rate) {
    Response answer;
    answer.setRates({USDRate::make(1, "USD"), USDRate::make(rate, "EUR")});
    rates_.takeAnswer(answer, RatesAnswer::Origin::file, true);
  }
  void show(const char* name) {
    const auto dollar = currencyManager().currencyForCode("USD");
    const auto euro = currencyManager().currencyForCode("EUR");
    const auto rate = rates_.rateForSourceCurrency(dollar, euro);
    std::printf("%s: %g\n", name, rate ? rate->rate().doubleValue() : 0.0);
  }

 private:
  PollLoop loop_;
  InotifyFolderWatch watch_{loop_, Log::process()};
  NotificationCenter notifications_;
  std::string problem_;
  std::unique_ptr<Transport> transport_ =
      ownTransport(loop_, Log::process(), Files::process(), {}, problem_);
  Platform platform_ = ownPlatform();
  StoreManager store_;
  RateManager rates_{platform_, &currencyManager(), &store_};

  Platform ownPlatform() {
    Platform own = Platform::process();
    own.loop = &loop_;
    own.folderWatch = &watch_;
    own.notifications = &notifications_;
    if (transport_ != nullptr) own.transport = transport_.get();
    return own;
  }
};

int main(int count, char** folders) {
  if (count != 3) return 2;
  std::thread other([folders] { Desk(folders[2]).note(0.9); });
  Desk(folders[1]).note(0.8);
  other.join();
  Desk(folders[1]).show("first");
  Desk(folders[2]).show("second");
  Desk("").show("in memory");
}
