#include "fexora/history/sqlite/Database.h"

#include <new>

#include <sqlite3.h>

#include "fexora/platform/base/Limits.h"

namespace fexora {
namespace {

constexpr int kWaitMilliseconds = static_cast<int>(limits::kHistoryWaitSeconds * 1000);
// Of one value; a table's text is the longest that there is.
constexpr int kMostBytes = static_cast<int>(2 * limits::kHistoryTableBytes);

SqliteFault::Kind kindOf(int code) {
  if (code == SQLITE_READONLY_DBMOVED) return SqliteFault::Kind::moved;
  if (code == SQLITE_READONLY_ROLLBACK || code == SQLITE_READONLY_RECOVERY) {
    return SqliteFault::Kind::cutShort;
  }
  switch (code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return SqliteFault::Kind::busy;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_TOOBIG:
    case SQLITE_ERROR:  // what is asked is right: it is the file that knows no such table
      return SqliteFault::Kind::damaged;
    case SQLITE_FULL:
      return SqliteFault::Kind::full;
    case SQLITE_READONLY:
      return SqliteFault::Kind::readOnly;
    default:
      return SqliteFault::Kind::other;
  }
}

void must(int code) {
  if (code == SQLITE_OK || code == SQLITE_ROW || code == SQLITE_DONE) return;
  if ((code & 0xFF) == SQLITE_NOMEM) throw std::bad_alloc();
  throw SqliteFault{kindOf(code), sqlite3_errstr(code)};
}

}  // namespace

Database::Database(const std::string& path, Access access) {
  const int mode = access == Access::writing ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY;
  const int code = sqlite3_open_v2(path.c_str(), &handle_,
                                   mode | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_PRIVATECACHE |
                                       SQLITE_OPEN_NOFOLLOW | SQLITE_OPEN_EXRESCODE,
                                   nullptr);
  try {
    must(code);
    sqlite3_busy_timeout(handle_, kWaitMilliseconds);
    sqlite3_limit(handle_, SQLITE_LIMIT_LENGTH, kMostBytes);
    // What another program put into the file is not run.
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    run("PRAGMA cell_size_check = ON; PRAGMA temp_store = MEMORY");
  } catch (...) {
    sqlite3_close(handle_);
    throw;
  }
}

Database::~Database() {
  sqlite3_close(handle_);
}

void Database::run(const char* sql) {
  must(sqlite3_exec(handle_, sql, nullptr, nullptr, nullptr));
}

bool Database::isMoved() const {
  int moved = 0;
  return sqlite3_file_control(handle_, "main", SQLITE_FCNTL_HAS_MOVED, &moved) == SQLITE_OK &&
         moved != 0;
}

bool Database::isInTransaction() const {
  return sqlite3_get_autocommit(handle_) == 0;
}

void Database::rollBack() noexcept {
  if (isInTransaction()) sqlite3_exec(handle_, "ROLLBACK", nullptr, nullptr, nullptr);
}

Statement::Statement(Database& database, const char* sql) : handle_(database.handle_) {
  must(sqlite3_prepare_v2(handle_, sql, -1, &statement_, nullptr));
}

Statement::~Statement() {
  sqlite3_finalize(statement_);
}

Statement& Statement::bind(int parameter, std::string_view text) {
  must(sqlite3_bind_text(statement_, parameter, text.data(), static_cast<int>(text.size()),
                         SQLITE_STATIC));
  return *this;
}

Statement& Statement::bind(int parameter, std::int64_t number) {
  must(sqlite3_bind_int64(statement_, parameter, number));
  return *this;
}

bool Statement::step() {
  const int code = sqlite3_step(statement_);
  must(code);
  return code == SQLITE_ROW;
}

void Statement::reset() noexcept {
  sqlite3_reset(statement_);
}

std::string_view Statement::text(int column) {
  // As a text it would be copied, for the zero at its end.
  const auto* const bytes = static_cast<const char*>(sqlite3_column_blob(statement_, column));
  if (bytes == nullptr) return {};
  return {bytes, static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))};
}

std::int64_t Statement::number(int column) {
  return sqlite3_column_int64(statement_, column);
}

}  // namespace fexora
