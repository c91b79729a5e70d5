#include "fexora/platform/strings/TableStrings.h"

#include <utility>

namespace fexora {

std::optional<std::string> TableStrings::string(std::string_view key) {
  std::shared_ptr<const Table> table;
  {
    const std::lock_guard lock(mutex_);
    table = table_;
  }
  const auto found = table->find(key);
  return found != table->end() ? std::optional(found->second) : std::nullopt;
}

std::uint64_t TableStrings::generation() {
  const std::lock_guard lock(mutex_);
  return generation_;
}

void TableStrings::setTable(Table table) {
  auto shared = std::make_shared<const Table>(std::move(table));
  const std::lock_guard lock(mutex_);
  table_.swap(shared);
  generation_ = newGeneration();
}

}  // namespace fexora
