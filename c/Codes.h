// The catalogue's codes as C gives and takes them.
//
// Made at first use, once; any thread. A place is that of the catalogue's list, and stays one when
// a C++ host in the same process changes a record's code.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fexora/catalogue/CurrencyManager.h"

#include "c/Outcome.h"

namespace fexora::c {

class Codes {
 public:
  static constexpr std::uint32_t kNone = UINT32_MAX;

  // May throw std::bad_alloc.
  static const Codes& all();

  std::size_t size() const noexcept { return codes_.size(); }
  // Lives to the end of the process.
  const char* operator[](std::uint32_t place) const { return codes_[place].c_str(); }
  const CurrencyRef& record(std::uint32_t place) const { return records_[place]; }
  // In any case of letters; kNone for no code, and for "GBp".
  std::uint32_t place(std::string_view code) const noexcept;
  // The same for a code that must be one: FEXORA_MISUSE for null, FEXORA_NO_CURRENCY with those
  // near.
  Outcome find(const char* code, std::uint32_t& place) const;

 private:
  struct Slot {
    std::uint64_t key = 0;
    std::uint32_t place = kNone;
  };

  explicit Codes(const CurrencyManager& catalogue);
  std::uint32_t longPlace(std::string_view code) const noexcept;

  std::vector<CurrencyRef> records_;
  std::vector<std::string> codes_;
  std::vector<Slot> slots_;  // a power of two of them, by the key's hash, the next one when taken
};

// The catalogue that texts are searched in: names are English and of the process's language. Any
// thread; may throw std::bad_alloc.
const CurrencyManager& searchedCatalogue();

}  // namespace fexora::c
