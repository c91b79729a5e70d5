// Several sources of strings asked one after another: the first that has the key gives the string.
#pragma once

#include <mutex>
#include <vector>

#include "fexora/platform/foundation/HostStrings.h"

namespace fexora {

class FEXORA_API FirstOfStrings final : public HostStrings {
 public:
  // The sources outlive this object.
  explicit FirstOfStrings(std::vector<HostStrings*> sources);

  std::optional<std::string> string(std::string_view key) override;
  // New whenever a source's is; zero as long as one of the sources promises nothing.
  std::uint64_t generation() override;

 private:
  const std::vector<HostStrings*> sources_;
  std::mutex mutex_;
  std::vector<std::uint64_t> seen_;
  std::uint64_t generation_ = newGeneration();
};

}  // namespace fexora
