// Host strings out of a table that is taken over as a whole, from whatever a host has.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "fexora/platform/strings/HostStrings.h"

namespace fexora {

class FEXORA_API TableStrings final : public HostStrings {
 public:
  using Table = std::map<std::string, std::string, std::less<>>;

  std::optional<std::string> string(std::string_view key) override;
  std::uint64_t generation() override;

  // Takes the place of the table so far (none at first) and starts a new generation. Any thread.
  void setTable(Table table);

 private:
  std::mutex mutex_;
  std::shared_ptr<const Table> table_ = std::make_shared<Table>();
  std::uint64_t generation_ = newGeneration();
};

}  // namespace fexora
