// Host strings out of a table that is loaded as a whole: from a .strings file, from a compiled
// gettext catalogue, or from whatever else a host has.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "fexora/platform/foundation/HostStrings.h"

namespace fexora {

using StringTable = std::map<std::string, std::string, std::less<>>;

// What reading a file of strings gives: a table, or the reason why not.
struct StringTableResult {
  std::optional<StringTable> table;
  std::string error;
};

class FEXORA_API TableStrings : public HostStrings {
 public:
  std::optional<std::string> string(std::string_view key) override;
  std::uint64_t generation() override;

  // Takes the place of the table so far (none at first) and starts a new generation. Any thread.
  void setTable(StringTable table);

 private:
  std::mutex mutex_;
  std::shared_ptr<const StringTable> table_ = std::make_shared<StringTable>();
  std::uint64_t generation_ = newGeneration();
};

// The file's bytes, or nothing with the reason: it is missing, unreadable or larger than
// limits::kStringsFileBytes.
FEXORA_API std::optional<std::string> readStringsBytes(const std::string& path, std::string& error);

}  // namespace fexora
