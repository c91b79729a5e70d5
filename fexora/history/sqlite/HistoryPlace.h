// The history's folder and file: made when something is to be kept, put aside when damaged.
//
// What cannot be done is thrown as a SqliteFault. One thread at a time.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "fexora/history/sqlite/Database.h"
#include "fexora/platform/files/Files.h"

namespace fexora {

class HistoryPlace {
 public:
  HistoryPlace(std::string folder, Files& files);

  // Whether a file is there that holds something.
  bool hasContent();
  // Whether this process may write the file.
  bool mayWrite();
  // Whether the file's own permissions let this process write it.
  bool isWritable();
  // Folder and file are there afterwards, for their user alone.
  void make();
  // The path of a file of the folder, with all links followed but one of its own name.
  std::string realPath(std::string_view name) const;
  std::uint64_t bytes();

  // Gives the file, and first the journal of a change that was cut short, names of their own. Done
  // where `database` is no longer the file at that place: then another process was first. Its
  // writers are kept out as far as the damage lets them lock it. Its new name, or nothing.
  std::optional<std::string> putAside(Database& database);

 private:
  std::string pathOf(std::string_view name) const;
  // One more than the highest number that is in use; the oldest file goes where there are many.
  std::string nextName();
  void moveAside(const std::string& name);

  std::string folder_;
  Files& files_;
};

}  // namespace fexora
