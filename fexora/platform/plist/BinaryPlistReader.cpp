#include "fexora/platform/plist/BinaryPlistReader.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/plist/PlistText.h"
#include "fexora/platform/text/Utf8.h"

namespace fexora {
namespace {

constexpr std::string_view kMagic = "bplist00";
constexpr std::size_t kTrailerBytes = 32;
constexpr const char* kBrokenText = "a text with control characters or broken Unicode";
// From 1970 to 2001-01-01T00:00:00Z, the zero of binary dates.
constexpr double kDateZero = 978307200.0;

// Reads the one list that it is made for. Every step answers false when the list is rejected.
class BinaryRun {
 public:
  explicit BinaryRun(std::string_view bytes) : bytes_(bytes) {}

  bool readTrailer();
  bool readRoot(Value& out) { return charge(1) && readObject(root_, 0, out); }
  const std::string& error() const noexcept { return error_; }

 private:
  bool reject(const char* why);
  // The big-endian number in `size` bytes at `at`, both in range already.
  std::uint64_t unsignedAt(std::size_t at, std::size_t size) const noexcept;
  // Takes the next `size` bytes of the objects' part.
  std::optional<std::string_view> take(std::size_t& at, std::uint64_t size) const noexcept;

  // Counts objects before room is made for them.
  bool charge(std::uint64_t objects);
  bool locate(std::uint64_t number, std::size_t& at);
  bool readObject(std::uint64_t number, int depth, Value& out);
  bool readKey(std::uint64_t number, std::string& out);
  bool readContent(std::size_t at, int depth, Value& out);
  bool readSimple(unsigned low, Value& out);
  bool readInteger(std::size_t at, unsigned low, Value& out);
  bool readReal(std::size_t at, unsigned low, Value& out);
  bool readDate(std::size_t at, unsigned low, Value& out);
  bool readCount(std::size_t& at, unsigned low, std::uint64_t& count);
  bool readData(std::size_t at, std::uint64_t count, Value& out);
  bool readAscii(std::size_t at, std::uint64_t count, Value& out);
  bool readUtf16(std::size_t at, std::uint64_t count, Value& out);
  bool addText(std::string text, Value& out);
  bool takeNumbers(std::size_t& at, std::uint64_t count, std::string_view& out);
  std::uint64_t numberIn(std::string_view numbers, std::size_t index) const noexcept;
  bool readArray(std::size_t at, std::uint64_t count, int depth, Value& out);
  bool readDictionary(std::size_t at, std::uint64_t count, int depth, Value& out);

  std::string_view bytes_;
  std::size_t offsetBytes_ = 0;
  std::size_t numberBytes_ = 0;
  std::uint64_t count_ = 0;
  std::uint64_t root_ = 0;
  std::size_t table_ = 0;   // its offset, where the objects end
  std::vector<bool> open_;  // the containers being read, by number
  std::size_t objects_ = 0;
  std::size_t textBytes_ = 0;
  std::string error_;
};

bool BinaryRun::reject(const char* why) {
  if (error_.empty()) error_ = why;
  return false;
}

std::uint64_t BinaryRun::unsignedAt(std::size_t at, std::size_t size) const noexcept {
  std::uint64_t value = 0;
  for (const char byte : bytes_.substr(at, size)) {
    value = (value << 8U) | static_cast<std::uint8_t>(byte);
  }
  return value;
}

std::optional<std::string_view> BinaryRun::take(std::size_t& at,
                                                std::uint64_t size) const noexcept {
  if (at > table_ || size > table_ - at) return std::nullopt;
  const std::string_view part = bytes_.substr(at, static_cast<std::size_t>(size));
  at += part.size();
  return part;
}

bool BinaryRun::readTrailer() {
  if (!bytes_.starts_with(kMagic)) return reject("an unknown version of the binary form");
  if (bytes_.size() < kMagic.size() + kTrailerBytes) return reject("the file ends too early");
  const std::size_t trailer = bytes_.size() - kTrailerBytes;
  offsetBytes_ = static_cast<std::size_t>(unsignedAt(trailer + 6, 1));
  numberBytes_ = static_cast<std::size_t>(unsignedAt(trailer + 7, 1));
  count_ = unsignedAt(trailer + 8, 8);
  root_ = unsignedAt(trailer + 16, 8);
  const std::uint64_t table = unsignedAt(trailer + 24, 8);
  const bool sizesFit =
      offsetBytes_ >= 1 && offsetBytes_ <= 8 && numberBytes_ >= 1 && numberBytes_ <= 8;
  if (!sizesFit || table < kMagic.size() || table > trailer || root_ >= count_ ||
      count_ > (trailer - table) / offsetBytes_) {
    return reject("a damaged trailer");
  }
  table_ = static_cast<std::size_t>(table);
  open_.assign(static_cast<std::size_t>(count_), false);
  return true;
}

bool BinaryRun::charge(std::uint64_t objects) {
  if (objects > limits::kPropertyListObjects - objects_) return reject("too many objects");
  objects_ += static_cast<std::size_t>(objects);
  return true;
}

bool BinaryRun::locate(std::uint64_t number, std::size_t& at) {
  if (number >= count_) return reject("a reference to no object");
  const auto index = static_cast<std::size_t>(number);
  const std::uint64_t offset = unsignedAt(table_ + index * offsetBytes_, offsetBytes_);
  if (offset < kMagic.size() || offset >= table_) return reject("an offset outside the objects");
  at = static_cast<std::size_t>(offset);
  return true;
}

bool BinaryRun::readObject(std::uint64_t number, int depth, Value& out) {
  std::size_t at = 0;
  if (!locate(number, at)) return false;
  const auto index = static_cast<std::size_t>(number);
  if (open_[index]) return reject("an object that holds itself");
  open_[index] = true;
  const bool done = readContent(at, depth, out);
  open_[index] = false;
  return done;
}

bool BinaryRun::readKey(std::uint64_t number, std::string& out) {
  std::size_t at = 0;
  if (!locate(number, at)) return false;
  const auto kind = static_cast<std::uint8_t>(bytes_[at]) >> 4U;
  if (kind != 0x5 && kind != 0x6) return reject("a key that is no text");
  Value key;
  if (!readContent(at, 0, key)) return false;
  out = *key.string();
  return true;
}

bool BinaryRun::readContent(std::size_t at, int depth, Value& out) {
  const auto marker = static_cast<std::uint8_t>(bytes_[at++]);
  const unsigned low = marker & 0x0FU;
  std::uint64_t count = 0;
  switch (marker >> 4U) {
    case 0x0:
      return readSimple(low, out);
    case 0x1:
      return readInteger(at, low, out);
    case 0x2:
      return readReal(at, low, out);
    case 0x3:
      return readDate(at, low, out);
    case 0x4:
      return readCount(at, low, count) && readData(at, count, out);
    case 0x5:
      return readCount(at, low, count) && readAscii(at, count, out);
    case 0x6:
      return readCount(at, low, count) && readUtf16(at, count, out);
    case 0x8:
      return reject("an archive's reference (uid)");
    case 0xA:
      return readCount(at, low, count) && readArray(at, count, depth + 1, out);
    case 0xD:
      return readCount(at, low, count) && readDictionary(at, count, depth + 1, out);
    default:
      return reject("an object of an unknown kind");
  }
}

bool BinaryRun::readSimple(unsigned low, Value& out) {
  if (low != 0x8 && low != 0x9) return reject("an object of an unknown kind");
  out = Value(low == 0x9);
  return true;
}

bool BinaryRun::readInteger(std::size_t at, unsigned low, Value& out) {
  const auto part = low <= 4 ? take(at, std::uint64_t{1} << low) : std::nullopt;
  if (!part) return reject("an integer of an unknown size");
  const std::size_t low64 = at - std::min<std::size_t>(part->size(), 8);
  const std::uint64_t bits = unsignedAt(low64, at - low64);
  // Up to four bytes unsigned; eight and sixteen signed, of sixteen the range of 64 bits.
  if (part->size() == 8) {
    out = Value(static_cast<std::int64_t>(bits));
    return true;
  }
  const std::uint64_t high = part->size() == 16 ? unsignedAt(at - 16, 8) : 0;
  const auto asSigned = static_cast<std::int64_t>(bits);
  if (high == 0) {
    out = Value(bits);
  } else if (high == ~std::uint64_t{0} && asSigned < 0) {
    out = Value(asSigned);
  } else {
    return reject("an integer beyond 64 bits");
  }
  return true;
}

bool BinaryRun::readReal(std::size_t at, unsigned low, Value& out) {
  if (low == 2 && take(at, 4)) {
    const auto bits = static_cast<std::uint32_t>(unsignedAt(at - 4, 4));
    out = Value(static_cast<double>(std::bit_cast<float>(bits)));
  } else if (low == 3 && take(at, 8)) {
    out = Value(std::bit_cast<double>(unsignedAt(at - 8, 8)));
  } else {
    return reject("a real number of an unknown size");
  }
  return true;
}

bool BinaryRun::readDate(std::size_t at, unsigned low, Value& out) {
  if (low != 3 || !take(at, 8)) return reject("a date of an unknown size");
  const Date date(std::bit_cast<double>(unsignedAt(at - 8, 8)) + kDateZero);
  if (!date.isoText()) return reject("a date outside the years 1 to 9999");
  out = Value(date);
  return true;
}

bool BinaryRun::readCount(std::size_t& at, unsigned low, std::uint64_t& count) {
  if (low != 0xF) {
    count = low;
    return true;
  }
  const auto marker = take(at, 1);
  const auto kind = marker ? static_cast<std::uint8_t>(marker->front()) : std::uint8_t{0};
  if ((kind & 0xFCU) != 0x10U) return reject("a count of an unknown size");
  const auto part = take(at, std::uint64_t{1} << (kind & 0x03U));
  if (!part) return reject("an object that ends too late");
  count = unsignedAt(at - part->size(), part->size());
  return true;
}

bool BinaryRun::readData(std::size_t at, std::uint64_t count, Value& out) {
  const auto part = take(at, count);
  if (!part) return reject("an object that ends too late");
  textBytes_ += part->size();
  if (textBytes_ > limits::kStoreFileBytes) return reject("too much text and data");
  out = Value(Data(part->begin(), part->end()));
  return true;
}

bool BinaryRun::readAscii(std::size_t at, std::uint64_t count, Value& out) {
  const auto part = take(at, count);
  if (!part) return reject("an object that ends too late");
  for (const char c : *part) {
    if (static_cast<std::uint8_t>(c) >= 0x80) return reject("an ASCII text that is not ASCII");
  }
  return addText(std::string(*part), out);
}

bool BinaryRun::readUtf16(std::size_t at, std::uint64_t count, Value& out) {
  const auto part = count <= bytes_.size() ? take(at, count * 2) : std::nullopt;
  if (!part) return reject("an object that ends too late");
  std::string text;
  if (!utf8FromUtf16(*part, text)) return reject(kBrokenText);
  return addText(std::move(text), out);
}

bool BinaryRun::addText(std::string text, Value& out) {
  // One long text may be named by many objects: the sum of what is built is bounded, too.
  textBytes_ += text.size();
  if (textBytes_ > limits::kStoreFileBytes) return reject("too much text and data");
  if (!isPlistText(text)) return reject(kBrokenText);
  out = Value(std::move(text));
  return true;
}

bool BinaryRun::takeNumbers(std::size_t& at, std::uint64_t count, std::string_view& out) {
  const auto part = count <= bytes_.size() ? take(at, count * numberBytes_) : std::nullopt;
  if (!part) return reject("an object that ends too late");
  out = *part;
  return true;
}

std::uint64_t BinaryRun::numberIn(std::string_view numbers, std::size_t index) const noexcept {
  const auto begin = static_cast<std::size_t>(numbers.data() - bytes_.data());
  return unsignedAt(begin + index * numberBytes_, numberBytes_);
}

bool BinaryRun::readArray(std::size_t at, std::uint64_t count, int depth, Value& out) {
  std::string_view numbers;
  if (depth > limits::kPropertyListDepth) return reject("nested too deeply");
  if (!takeNumbers(at, count, numbers) || !charge(count)) return false;
  Array items(static_cast<std::size_t>(count));
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (!readObject(numberIn(numbers, i), depth, items[i])) return false;
  }
  out = Value(std::move(items));
  return true;
}

bool BinaryRun::readDictionary(std::size_t at, std::uint64_t count, int depth, Value& out) {
  std::string_view keys;
  std::string_view values;
  if (depth > limits::kPropertyListDepth) return reject("nested too deeply");
  if (!takeNumbers(at, count, keys) || !takeNumbers(at, count, values)) return false;
  if (!charge(count)) return false;
  std::vector<Dictionary::Entry> entries(static_cast<std::size_t>(count));
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (!readKey(numberIn(keys, i), entries[i].first)) return false;
    if (!readObject(numberIn(values, i), depth, entries[i].second)) return false;
  }
  out = Value(Dictionary::fromEntries(entries));
  return true;
}

}  // namespace

PlistResult readBinaryPlist(std::string_view bytes) {
  BinaryRun run(bytes);
  PlistResult result;
  if (!run.readTrailer() || !run.readRoot(result.value)) return {{}, run.error()};
  return result;
}

}  // namespace fexora
