// Every bound that keeps hostile or broken input from growing, nesting or lasting without end.
// Sizes in bytes, times in seconds unless the name says otherwise.
#pragma once

#include <cstddef>

namespace fexora::limits {

// Files in the container.
inline constexpr std::size_t kStoreFileBytes = std::size_t{64} << 20;
// What a process takes at most that reads the worst file of that size, with another one's content
// still there: it follows from this limit and the two below, and a test measures it.
inline constexpr std::size_t kStoreMemoryBytes = std::size_t{1} << 30;
inline constexpr std::size_t kCatalogueFileBytes = std::size_t{16} << 20;
inline constexpr int kPropertyListDepth = 256;
// Objects in one property list: a binary file may name one object many times over, so the count is
// of what is built, not of what is stored.
inline constexpr std::size_t kPropertyListObjects = std::size_t{2} << 20;
// Kept-aside copies of unreadable store files; the oldest goes when one more comes.
inline constexpr int kUnreadableCopies = 4;
// Names that are looked at in one folder, whoever made them.
inline constexpr std::size_t kFolderNames = std::size_t{64} << 10;
// How often one interrupted system call is made again before it counts as failed.
inline constexpr int kInterruptedRetries = 64;
// How often a temporary name that is taken makes the writer try the next one.
inline constexpr int kTemporaryNames = 64;

// How often a folder is looked for when nothing tells of its coming.
inline constexpr double kFolderRetrySeconds = 5.0;

// Typed text. Parsing is quadratic in the digits, so longer text is no number.
inline constexpr std::size_t kAmountBytes = 4096;
// A sentence about money: much more than anyone types, and little enough for any nesting in it.
inline constexpr std::size_t kSentenceBytes = 1000;
// Digits after the decimal mark in a number for people; asking for more gives this many. The
// smallest double has its last of 17 digits at place 340.
inline constexpr int kFractionDigits = 340;
// Locales whose number formats are kept at one time.
inline constexpr std::size_t kKeptLocales = 32;

// Text from outside, in code points: a line for people, and a currency's code.
inline constexpr std::size_t kLineCharacters = 500;
inline constexpr std::size_t kCodeCharacters = 64;

// The rates service.
inline constexpr double kConnectSeconds = 10.0;
inline constexpr double kRequestSeconds = 30.0;
inline constexpr std::size_t kAnswerBytes = std::size_t{16} << 20;
inline constexpr std::size_t kHeaderBytes = std::size_t{64} << 10;
inline constexpr int kRedirects = 5;
inline constexpr int kJsonDepth = 256;
// Answers of the service, one an address and container, that are kept for asking again.
inline constexpr int kKeptAnswers = 8;
// Values in one answer, keys not counted: what they take in memory has little to do with the bytes
// that they came as.
inline constexpr std::size_t kJsonValues = std::size_t{256} << 10;

// The rates of past days. How long a call waits for another process that writes them, the tables
// that are kept at once, and days that one question brings.
inline constexpr double kHistoryWaitSeconds = 2.0;
inline constexpr std::size_t kHistoryTables = std::size_t{32} << 10;
inline constexpr std::size_t kHistoryDays = std::size_t{32} << 10;
// The figures of one table, as text.
inline constexpr std::size_t kHistoryTableBytes = std::size_t{1} << 20;
// Damaged files of theirs that are kept aside; the oldest goes when one more comes.
inline constexpr int kDamagedHistories = 4;
// Corrections that are told one by one.
inline constexpr std::size_t kHistoryCorrections = 64;

// Older tables that the store keeps for what the newest answer lacks.
inline constexpr std::size_t kKeptTables = 4;

// Lines of one conversion. Codes that come twice multiply: n entries of two codes give n²/4 lines.
inline constexpr std::size_t kConversionLines = std::size_t{256} << 10;

}  // namespace fexora::limits
