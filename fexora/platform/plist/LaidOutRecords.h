// A list of records as it stands in the bytes of a property list, laid out as PropertyListWriter.h
// lays it out: dictionaries with the same keys, each value a text or a number. Ten thousand rates
// are such a list, of which a conversion asks for two.
//
// All of the list was looked through before there is one of these, so that it holds what any reader
// would read there. It shares the bytes with whoever read them. Any thread.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fexora/platform/values/DeferredList.h"

namespace fexora {

class FEXORA_API LaidOutRecords final : public DeferredList {
 public:
  // A dictionary with more keys is none of these.
  static constexpr std::size_t kMostFields = 4;
  // A shorter list is sooner read than looked through.
  static constexpr std::size_t kFewestRecords = 8;

  enum class Form : std::uint8_t { string, real, integer };
  struct Field {
    Form form = Form::string;
    std::string_view text;
    // May throw std::bad_alloc.
    Value value() const;
  };
  // Its texts are valid as long as the list.
  class Record {
   public:
    // The first one under `key`; null when there is none.
    const Field* find(std::string_view key) const noexcept;

   private:
    friend class LaidOutRecords;
    const std::vector<std::string_view>* keys_ = nullptr;
    std::array<Field, kMostFields> fields_;
  };

  // The list whose first record begins at `at` in the bytes, with `depth` containers open around
  // it. Null when something else stands there, or no list of enough records, all of one kind. May
  // throw std::bad_alloc.
  static std::shared_ptr<const LaidOutRecords> readAt(std::shared_ptr<const std::string> bytes,
                                                      std::size_t at, std::size_t depth);

  std::size_t size() const noexcept { return size_; }
  // How many bytes they take.
  std::size_t length() const noexcept { return length_; }
  // These bytes: whole lines, as they stand in a property list with depth() containers around them.
  std::string_view lines() const noexcept { return std::string_view(*bytes_).substr(at_, length_); }
  std::size_t depth() const noexcept { return depth_; }
  // Values, each counted.
  std::size_t objects() const noexcept { return size_ * (1 + keys_.size()); }

  // Calls visit(record) for each, in order; the record is valid during the call.
  template <class Visit>
  void visit(Visit visit) const {
    std::string_view rest = lines();
    Record record;
    record.keys_ = &keys_;
    while (!rest.empty()) {
      takeRead(rest, record);
      visit(std::as_const(record));
    }
  }

 protected:
  Array makeElements() const override;

 private:
  LaidOutRecords(std::shared_ptr<const std::string> bytes, std::size_t at,
                 std::size_t depth) noexcept
      : bytes_(std::move(bytes)), at_(at), depth_(depth) {}

  friend class LaidOutRecordsWriter;
  // The list of `size` records that the text is, from its beginning to its end.
  static std::shared_ptr<const LaidOutRecords> written(std::shared_ptr<const std::string> text,
                                                       std::size_t depth, std::size_t size);
  bool readShape(std::string_view rest);
  bool take(std::string_view& rest) const;
  void takeRead(std::string_view& rest, Record& record) const noexcept;

  std::shared_ptr<const std::string> bytes_;
  std::size_t at_;
  std::size_t depth_;
  std::size_t length_ = 0;
  std::size_t size_ = 0;
  std::vector<std::string_view> keys_;    // of each record, in the bytes' order
  std::vector<std::string_view> before_;  // the lines before each value, up to its tabs
  std::string_view closing_;
};

}  // namespace fexora
