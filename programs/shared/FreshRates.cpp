#include "programs/shared/FreshRates.h"

#include <utility>

#include "fexora/platform/base/Library.h"

#include "programs/shared/RatesRequest.h"
#include "programs/sources/SourcesModule.h"

namespace fexora::program {
namespace {

using Cause = RatesProblem::Cause;
using sources::SourceStep;

RatesProblem refusalOf(ResponseError error) {
  const bool isRefused = error.kind == ResponseError::Kind::implausible;
  return {isRefused ? Cause::refused : Cause::request, std::move(error)};
}

RatesProblem unreadable(std::string message) {
  return {Cause::unread, {ResponseError::Kind::notJson, {}, std::move(message), 0}};
}

}  // namespace

struct FreshRates::Run {
  std::vector<SourceStep> steps;
  Done done;
  std::size_t at = 0;
  std::optional<RatesProblem> problem{};
};

FreshRates::FreshRates(RateManager& rates, StoreManager& store) : rates_(rates), store_(store) {}

FreshRates::~FreshRates() {
  stop();
}

std::vector<SourceStep> FreshRates::steps() const {
  return sources::stepsFor(store_.ratesFrom(), rates_.ratesURL());
}

void FreshRates::setProgress(Transfer::ProgressHandler told) {
  told_ = std::move(told);
}

void FreshRates::start(std::vector<SourceStep> steps, Done done) {
  stop();
  run_ = std::make_shared<Run>(Run{std::move(steps), std::move(done)});
  if (!run_->steps.empty()) return next(run_);
  run_->problem = RatesProblem{Cause::nowhere, {}};
  rates_.platform().loop->post([run = run_, this, alive = std::weak_ptr(alive_)] {
    if (!alive.expired() && run_ == run) next(run);
  });
}

void FreshRates::stop() {
  run_.reset();
  if (const auto transfer = std::exchange(transfer_, nullptr)) transfer->cancel();
  // Another's request of the manager goes on.
  if (std::exchange(asksService_, false)) rates_.cancelRequests();
}

void FreshRates::next(const std::shared_ptr<Run>& run) {
  if (run->at < run->steps.size()) {
    const SourceStep& step = run->steps[run->at++];
    return step.isService ? askService(run, step.addresses.front()) : askSource(run, step);
  }
  run_.reset();
  run->done(run->problem);
}

void FreshRates::fail(const std::shared_ptr<Run>& run, RatesProblem problem) {
  if (!run->problem) run->problem = std::move(problem);
  next(run);
}

void FreshRates::askService(const std::shared_ptr<Run>& run, const std::string& address) {
  rates_.setRatesURL(address);
  rates_.setProgress(told_);
  asksService_ = true;
  askForFreshRates(rates_, [run, this, alive = std::weak_ptr(alive_)](const ResponseError* error) {
    if (alive.expired() || run_ != run) return;
    asksService_ = false;
    if (error != nullptr) return fail(run, refusalOf(*error));
    if (taken_) taken_(std::string(sources::kService), {serviceTable()});
    run->problem.reset();
    run->at = run->steps.size();
    next(run);
  });
}

RatesTable FreshRates::serviceTable() const {
  RatesTable table;
  table.rates = store_.loadUSDRates().value_or(std::vector<USDRateRef>());
  table.published = rates_.freshness().published;
  return table;
}

void FreshRates::askSource(const std::shared_ptr<Run>& run, const SourceStep& step) {
  fetch(step, [run, this, name = step.name, alive = std::weak_ptr(alive_)](
                  std::optional<std::string> text, const RatesProblem& problem) {
    if (alive.expired() || run_ != run) return;
    if (!text) return fail(run, problem);
    std::string unread;
    std::size_t passedOver = 0;
    auto tables = readTables({{name, std::move(text)}}, unread, passedOver);
    if (!tables) return fail(run, unreadable(std::move(unread)));
    if (auto refused = rates_.takeTables(*tables, true)) {
      return fail(run, refusalOf(*std::move(refused)));
    }
    if (taken_) taken_(name, *tables);
    run->problem.reset();
    run->at = run->steps.size();
    next(run);
  });
}

void FreshRates::fetch(const SourceStep& step, Text complete) {
  fetchAt(step, 0, std::move(complete), std::nullopt);
}

void FreshRates::fetchAt(const SourceStep& step, std::size_t place, Text complete,
                         std::optional<RatesProblem> first) {
  if (place >= step.addresses.size()) {
    const RatesProblem problem = first.value_or(RatesProblem{
        Cause::request,
        {ResponseError::Kind::noAddress, {}, step.name + ": no address of it is known", 0}});
    return rates_.platform().loop->post(
        [complete = std::move(complete), problem] { complete(std::nullopt, problem); });
  }
  const std::string& address = step.addresses[place];
  if (!step.isService && !address.starts_with("https://")) {
    RatesProblem problem{Cause::request,
                         {ResponseError::Kind::noAddress, shownAddress(address),
                          shownAddress(address) + ": a source is asked by https only", 0}};
    return fetchAt(step, place + 1, std::move(complete), first.value_or(std::move(problem)));
  }
  transfer_ = std::make_shared<Transfer>(told_);
  NetworkManager::textRequest(
      *rates_.platform().transport, address,
      [this, alive = std::weak_ptr(alive_), transfer = transfer_, step, place,
       complete = std::move(complete), first = std::move(first)](
          std::optional<std::string> text, std::optional<ResponseError> error) mutable {
        if (alive.expired() || transfer->isCancelled()) return;
        if (text) return complete(std::move(text), {});
        if (!first && error) first = RatesProblem{Cause::request, *std::move(error)};
        fetchAt(step, place + 1, std::move(complete), std::move(first));
      },
      transfer_);
}

std::optional<std::vector<RatesTable>> readTables(
    const std::vector<std::pair<std::string, std::optional<std::string>>>& operands,
    std::string& problem, std::size_t& passedOver) {
  void* const entry = moduleEntry("sources", "fexora_sources_module", problem);
  if (entry == nullptr) {
    problem = "sources of rates cannot be read: " + problem;
    return std::nullopt;
  }
  std::vector<sources::Operand> named;
  for (const auto& [name, text] : operands) named.push_back({name, text});
  sources::Reading reading;
  reinterpret_cast<sources::ReadSources*>(entry)(named, reading);
  passedOver = reading.passedOver;
  problem = std::move(reading.problem);
  if (reading.tables.empty()) return std::nullopt;
  return std::move(reading.tables);
}

}  // namespace fexora::program
