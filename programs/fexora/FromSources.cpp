#include "programs/fexora/FromSources.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <utility>

#include "fexora/platform/base/Library.h"
#include "fexora/platform/network/ShownAddress.h"

#include "programs/fexora/Progress.h"
#include "programs/fexora/Refresh.h"
#include "programs/shared/Failure.h"
#include "programs/sources/SourcesModule.h"

namespace fexora::program {
namespace {

sources::ReadSources& module() {
  std::string reason;
  void* entry = moduleEntry("sources", "fexora_sources_module", reason);
  if (entry == nullptr) {
    throw Failure{Exit::network, "source", "sources of rates cannot be read: " + reason};
  }
  return *reinterpret_cast<sources::ReadSources*>(entry);
}

std::string fetch(const std::string& address) {
  bool ended = false;
  std::optional<std::string> text;
  std::optional<ResponseError> error;
  Transfer::Progress received;
  const auto transfer =
      std::make_shared<Transfer>([&](const Transfer::Progress& now) { received = now; });
  NetworkManager::textRequest(
      *Platform::process().transport, address,
      [&](std::optional<std::string> answer, std::optional<ResponseError> problem) {
        text = std::move(answer);
        error = std::move(problem);
        ended = true;
      },
      transfer);
  waitFor(address, received, ended);
  if (text) return *std::move(text);
  throw Failure{Exit::network, error ? kindOf(*error) : "noTransport",
                error ? error->message : shownAddress(address) + ": no answer"};
}

// The day that has begun in UTC.
Date today() {
  constexpr double kDay = 86'400;
  return Date(std::floor(Platform::process().loop->wallSeconds() / kDay) * kDay);
}

}  // namespace

bool isAddress(const std::string& operand) {
  return operand.starts_with("http://") || operand.starts_with("https://");
}

std::shared_ptr<Response> answerFromSources(const std::vector<std::string>& operands) {
  if (std::count(operands.begin(), operands.end(), "-") > 1) {
    throw usageFailure("--from -: standard input can be read once only");
  }
  sources::ReadSources& read = module();
  std::vector<sources::Operand> sources;
  for (const std::string& operand : operands) {
    if (isAddress(operand)) {
      sources.push_back({shownAddress(operand), fetch(operand)});
    } else {
      sources.push_back({operand, std::nullopt});
    }
  }
  sources::Reading reading;
  read(sources, today(), reading);
  if (reading.answer == nullptr) throw Failure{Exit::network, "source", reading.problem};
  return reading.answer;
}

}  // namespace fexora::program
