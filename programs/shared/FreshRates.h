// Asks for rates where the store's setting says, and takes what comes into the store.
//
// Nothing is sent but the requests themselves. Main thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "fexora/fexora.h"

#include "programs/sources/NamedSources.h"

namespace fexora::program {

struct RatesProblem {
  enum class Cause : std::uint8_t {
    request,  // `error` says why there was no answer
    unread,   // what came is no table of rates: `error.message`
    refused,  // the check was against it: see RateManager::verdict
    nowhere,  // the setting says so
  };

  Cause cause = Cause::request;
  ResponseError error;
};

class FreshRates {
 public:
  // What it names outlives it.
  FreshRates(RateManager& rates, StoreManager& store);
  FreshRates(const FreshRates&) = delete;
  FreshRates& operator=(const FreshRates&) = delete;
  ~FreshRates();

  // Whom the store's setting names.
  std::vector<sources::SourceStep> steps() const;
  // Told while an answer comes; counts for what is started from then on.
  void setProgress(Transfer::ProgressHandler told);

  // Called with what was taken, and the name of the source that sent it ("service": of the rates
  // service), before `done`.
  using Taken = std::function<void(const std::string& name, const std::vector<RatesTable>& tables)>;
  void setTaken(Taken taken) { taken_ = std::move(taken); }

  // Asks one after the other until an answer is taken; later `done`, with nothing then, else with
  // why the first of them gave nothing. Nobody to ask is told later, too. One at a time.
  using Done = std::function<void(const std::optional<RatesProblem>& problem)>;
  void start(std::vector<sources::SourceStep> steps, Done done);
  // Ends what is under way; its `done` is not called.
  void stop();

  // The text of one source, from the first address that gives one; later, once, on the main thread.
  using Text = std::function<void(std::optional<std::string> text, const RatesProblem& problem)>;
  void fetch(const sources::SourceStep& step, Text complete);

 private:
  struct Run;

  void next(const std::shared_ptr<Run>& run);
  void askService(const std::shared_ptr<Run>& run, const std::string& address);
  void askSource(const std::shared_ptr<Run>& run, const sources::SourceStep& step);
  void fetchAt(const sources::SourceStep& step, std::size_t place, Text complete,
               std::optional<RatesProblem> first);
  // The answer that the store has just taken.
  RatesTable serviceTable() const;
  void fail(const std::shared_ptr<Run>& run, RatesProblem problem);

  RateManager& rates_;
  StoreManager& store_;
  Transfer::ProgressHandler told_;
  Taken taken_;
  std::shared_ptr<Transfer> transfer_;
  bool asksService_ = false;
  std::shared_ptr<Run> run_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

// What sources gave, read by the module of their formats; nothing, with `problem` for people, where
// one cannot be read. Files are read here. `passedOver` counts keys that are no code.
std::optional<std::vector<RatesTable>> readTables(
    const std::vector<std::pair<std::string, std::optional<std::string>>>& operands,
    std::string& problem, std::size_t& passedOver);

}  // namespace fexora::program
