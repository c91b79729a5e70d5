#include "fexora/history/sqlite/SqliteHistory.h"
#include "fexora/platform/base/ModuleEntries.h"

fexora::RateHistory* fexora_history_module(const std::string* folder, fexora::Files* files,
                                           fexora::Log* log) {
  return new fexora::SqliteHistory(*folder, *files, *log);
}
