// An SQLite database file as far as the history of rates needs one: opened without following links,
// asked and changed by statements that end with their scope.
//
// What SQLite reports is thrown as a SqliteFault, which never leaves this folder. One thread at a
// time.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace fexora {

struct SqliteFault {
  enum class Kind : std::uint8_t {
    busy,      // another process writes, or reads while this one wants to write
    damaged,   // the file is no database, or its pages contradict each other
    full,      // there is no room on the disk
    readOnly,  // it may not be changed
    cutShort,  // a change of it was cut short, and this process may not put that right
    moved,     // the file that is open is no longer the one at its path
    other,
  };
  Kind kind = Kind::other;
  std::string reason;  // for people, without the file's name
};

class Database {
 public:
  enum class Access : std::uint8_t { reading, writing };

  // Of a file that is there. Links are not followed in any part of the path.
  Database(const std::string& path, Access access);
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;
  ~Database();

  void run(const char* sql);
  // Whether another file has taken the place of this one, or none.
  bool isMoved() const;
  bool isInTransaction() const;
  // Ends the transaction that there may be, as if it had not begun. Reports nothing.
  void rollBack() noexcept;

 private:
  friend class Statement;

  sqlite3* handle_ = nullptr;
};

// `sql` stays as long as the statement. Parameters are counted from 1, columns from 0.
class Statement {
 public:
  Statement(Database& database, const char* sql);
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;
  ~Statement();

  // The text must stay until the next step.
  Statement& bind(int parameter, std::string_view text);
  Statement& bind(int parameter, std::int64_t number);

  // The next row; false when there is none. Without rows: it is done.
  bool step();
  // Ready for other parameters and a new run.
  void reset() noexcept;

  // Valid until the next step.
  std::string_view text(int column);
  std::int64_t number(int column);

 private:
  sqlite3* handle_;
  sqlite3_stmt* statement_ = nullptr;
};

}  // namespace fexora
