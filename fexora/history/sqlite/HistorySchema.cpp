#include "fexora/history/sqlite/HistorySchema.h"

#include <initializer_list>

#include <zlib.h>

#include "fexora/platform/text/NumberText.h"

namespace fexora {
namespace {

constexpr std::int64_t kApplication = 0x46785231;  // "FxR1"
constexpr std::int64_t kVersion = 1;
// Beyond it, no version will ever be: the number was damaged.
constexpr std::int64_t kLastVersion = 255;

constexpr const char* kPublished =
    "CREATE TABLE published (\n"
    "  day     TEXT NOT NULL,     -- 2026-09-29, as the source names it\n"
    "  source  TEXT NOT NULL,     -- ecb\n"
    "  base    TEXT NOT NULL,     -- EUR\n"
    "  figures TEXT NOT NULL,     -- lines of code and figure, as printed, by code\n"
    "  taken   INTEGER NOT NULL,  -- seconds since 1970\n"
    "  sum     INTEGER NOT NULL,  -- CRC-32 of day, source, base, taken, figures, NUL between "
    "them\n"
    "  PRIMARY KEY (day, source)\n"
    ")";
// What a source had printed before.
constexpr const char* kReplaced =
    "CREATE TABLE replaced (\n"
    "  day    TEXT NOT NULL,\n"
    "  source TEXT NOT NULL,\n"
    "  code   TEXT NOT NULL,\n"
    "  figure TEXT NOT NULL,\n"
    "  taken  INTEGER NOT NULL,  -- when it came\n"
    "  until  INTEGER NOT NULL,  -- when another one came\n"
    "  sum    INTEGER NOT NULL   -- CRC-32 of the columns before, NUL between them\n"
    ")";

std::int64_t numberOf(Database& database, const char* pragma) {
  Statement statement(database, pragma);
  return statement.step() ? statement.number(0) : 0;
}

// Whether there are our two tables and nothing else that could be run or read in their place.
bool isOurSchema(Database& database) {
  Statement statement(database,
                      "SELECT sql FROM sqlite_schema WHERE sql IS NOT NULL ORDER BY name");
  for (const std::string_view sql : {kPublished, kReplaced}) {
    if (!statement.step() || statement.text(0) != sql) return false;
  }
  return !statement.step();
}

std::int64_t checksumOf(std::initializer_list<std::string_view> columns) {
  uLong sum = 0;
  const auto add = [&sum](std::string_view bytes) {
    // A null pointer would begin anew.
    if (!bytes.empty()) {
      sum = crc32_z(sum, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size());
    }
  };
  for (const std::string_view& column : columns) {
    if (&column != columns.begin()) add(std::string_view("\0", 1));
    add(column);
  }
  return static_cast<std::int64_t>(sum);
}

}  // namespace

HistoryForm historyForm(Database& database) {
  const std::int64_t application = numberOf(database, "PRAGMA application_id");
  const std::int64_t version = numberOf(database, "PRAGMA user_version");
  if (application == 0 && version == 0 && numberOf(database, "PRAGMA schema_version") == 0) {
    return HistoryForm::empty;
  }
  if (application != kApplication) return HistoryForm::foreign;
  if (version > kVersion && version <= kLastVersion) return HistoryForm::later;
  return version == kVersion && isOurSchema(database) ? HistoryForm::current : HistoryForm::foreign;
}

void makeHistory(Database& database) {
  database.run(kPublished);
  database.run(kReplaced);
  database.run(("PRAGMA application_id = " + integerText(kApplication)).c_str());
  database.run(("PRAGMA user_version = " + integerText(kVersion)).c_str());
}

std::int64_t checksum(const HistoryRow& row) {
  return checksumOf({row.day, row.source, row.base, integerText(row.taken), row.figures});
}

std::int64_t checksum(const ReplacedRow& row) {
  return checksumOf(
      {row.day, row.source, row.code, row.figure, integerText(row.taken), integerText(row.until)});
}

bool readRow(Statement& statement, HistoryRow& row, Day& day) {
  row = {statement.text(0), sourceOf(statement), statement.text(2), statement.text(3),
         statement.number(4)};
  const auto date = dayFromIsoText(row.day);
  if (!date || checksum(row) != statement.number(5)) return false;
  day = *date;
  return true;
}

std::string_view sourceOf(Statement& statement) {
  return statement.text(1);
}

}  // namespace fexora
