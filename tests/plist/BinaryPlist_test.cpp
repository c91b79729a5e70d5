// Binary property lists made byte by byte; those of another program are in Interchange_test.cpp.
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/plist/PropertyListReader.h"

#include "tests/support/Describe.h"

namespace fexora::test {
namespace {

using namespace std::string_literals;

std::string bigEndian(std::uint64_t value, int bytes) {
  std::string out;
  for (; bytes > 0; --bytes, value >>= 8U)
    out.insert(out.begin(), static_cast<char>(value & 0xFFU));
  return out;
}

struct Trailer {
  std::uint64_t offsetBytes = 2;
  std::uint64_t numberBytes = 1;
  std::uint64_t root = 0;
  // What the file says beside the truth.
  std::uint64_t countMore = 0;
  std::uint64_t tableMore = 0;
};

std::string binary(const std::vector<std::string>& objects, const Trailer& trailer = {}) {
  std::string file = "bplist00";
  std::string table;
  for (const std::string& object : objects) {
    table += bigEndian(file.size(), static_cast<int>(trailer.offsetBytes));
    file += object;
  }
  const std::uint64_t tableAt = file.size() + trailer.tableMore;
  return file + table + std::string(6, '\0') + bigEndian(trailer.offsetBytes, 1) +
         bigEndian(trailer.numberBytes, 1) + bigEndian(objects.size() + trailer.countMore, 8) +
         bigEndian(trailer.root, 8) + bigEndian(tableAt, 8);
}

void expectRejected(const std::string& bytes, const std::string& why) {
  const PlistResult result = readPropertyList(bytes);
  EXPECT_EQ(result.error, why);
  EXPECT_TRUE(result.value.isNull());
}

std::string readOne(const std::string& object) {
  const PlistResult result = readPropertyList(binary({object}));
  return result.ok() ? describe(result.value) : result.error;
}

// What is read of the object, described, or why it is rejected.
TEST(BinaryPlist, Leaves) {
  const std::uint64_t ones = ~std::uint64_t{0};
  const std::string broken = "a text with control characters or broken Unicode";
  const std::string unknown = "an object of an unknown kind";
  const std::string size = "an integer of an unknown size";
  using Row = std::pair<std::string, std::string>;
  for (const auto& [object, expected] :
       {Row("\x08"s, "b0"), Row("\x09"s, "b1"), Row("\x10\xFF"s, "i255"),
        Row("\x12\xFF\xFF\xFF\xFF"s, "i4294967295"), Row("\x13"s + bigEndian(ones, 8), "i-1"),
        Row("\x14"s + std::string(8, '\0') + bigEndian(ones, 8), describe(0x1p64)),
        Row("\x14"s + std::string(8, '\xFF') + bigEndian(ones - 4, 8), "i-5"),
        Row("\x22\x3F\xC0\x00\x00"s, describe(1.5)),
        Row("\x23"s + bigEndian(std::uint64_t{1} << 63U, 8), describe(-0.0)),
        // Half a second after 2001 began.
        Row("\x33"s + bigEndian(0x3FE0000000000000, 8), describe(Date(978307200.5))),
        Row("\x42\x00\xFF"s, "x00ff"), Row("\x52hi"s, describe("hi")),
        Row("\x5F\x10\x02hi"s, describe("hi")),
        Row("\x63\x20\xAC\xD8\x3D\xDC\xB6"s, describe("€💶")), Row("\xA0"s, "a[]"),
        Row("\xD0"s, "d{}"), Row("\x00"s, unknown), Row("\x0F"s, unknown), Row("\xC0"s, unknown),
        Row("\x80\x01"s, "an archive's reference (uid)"),
        Row("\x14"s + bigEndian(1, 8) + bigEndian(0, 8), "an integer beyond 64 bits"),
        Row("\x15"s + std::string(32, '\0'), size), Row("\x13\x01"s, size),
        Row("\x23\x01"s, "a real number of an unknown size"),
        Row("\x33"s + bigEndian(0x7FF8000000000000, 8), "a date outside the years 1 to 9999"),
        Row("\x51\xE9"s, "an ASCII text that is not ASCII"), Row("\x51\x01"s, broken),
        Row("\x61\xD8\x3D"s, broken), Row("\x62\xDC\xB6\xD8\x3D"s, broken)}) {
    EXPECT_EQ(readOne(object), expected);
  }
}

TEST(BinaryPlist, SizesBeyondTheFile_AreRejectedWithoutRoomMade) {
  const std::string late = "an object that ends too late";
  const std::string most = bigEndian(0x7FFFFFFFFFFFFFFF, 8);
  for (const char* kind : {"\x4F\x13", "\x5F\x13", "\x6F\x13", "\xAF\x13", "\xDF\x13"}) {
    EXPECT_EQ(readOne(kind + most), late);
    EXPECT_EQ(readOne(kind + bigEndian(~std::uint64_t{0}, 8)), late);
  }
  EXPECT_EQ(readOne("\x5F"s), "a count of an unknown size");
  EXPECT_EQ(readOne("\x5F\x14"s), "a count of an unknown size");
}

TEST(BinaryPlist, DamagedTrailers_AreRejected) {
  const std::vector<std::string> one = {"\x09"};
  EXPECT_TRUE(readPropertyList(binary(one, {.offsetBytes = 3, .numberBytes = 8})).ok());
  constexpr std::uint64_t kMost = ~std::uint64_t{0};
  const Trailer damaged[] = {{.root = 1},          {.countMore = 1},
                             {.countMore = kMost}, {.countMore = std::uint64_t{1} << 62U},
                             {.tableMore = 3},     {.tableMore = kMost - 8},
                             {.offsetBytes = 0},   {.offsetBytes = 9}};
  for (const Trailer& trailer : damaged) expectRejected(binary(one, trailer), "a damaged trailer");
  expectRejected("bplist00", "the file ends too early");
  expectRejected("bplist15" + std::string(40, '\0'), "an unknown version of the binary form");
}

TEST(BinaryPlist, References) {
  EXPECT_EQ(describe(readPropertyList(binary({"\xA2\x01\x01", "\x51x"})).value), "a[s78,s78,]");
  EXPECT_EQ(
      describe(readPropertyList(binary({"\xD2\x01\x01\x02\x03", "\x51k", "\x08", "\x09"})).value),
      "d{6b:b0,}");
  expectRejected(binary({"\xA1\x07"}), "a reference to no object");
  expectRejected(binary({"\xA1\x00"s}), "an object that holds itself");
  expectRejected(binary({"\xA1\x01", "\xD1\x02\x00"s, "\x51k"}), "an object that holds itself");
  expectRejected(binary({"\xD1\x01\x01", "\x09"}), "a key that is no text");
  expectRejected(binary({"\xD1\x00\x00"s}), "a key that is no text");
}

TEST(BinaryPlist, ObjectsNamedManyTimes_CountEachTime) {
  // Each array names the next one twice: 2^30 leaves in some 150 bytes.
  std::vector<std::string> objects;
  for (char next = 1; next <= 30; ++next) objects.push_back({'\xA2', next, next});
  objects.emplace_back("\x09");
  expectRejected(binary(objects), "too many objects");

  // One array of a million names around a text of a megabyte.
  const std::string count = "\x13" + bigEndian(1'000'000, 8);
  const std::vector<std::string> texts = {"\xAF" + count + std::string(1'000'000, '\x01'),
                                          "\x5F" + count + std::string(1'000'000, 'x')};
  expectRejected(binary(texts, {.offsetBytes = 4}), "too much text and data");
}

TEST(BinaryPlist, Depth_IsBounded) {
  const auto nested = [](unsigned depth) {
    std::vector<std::string> objects;
    for (unsigned i = 1; i < depth; ++i) objects.push_back("\xA1" + bigEndian(i, 2));
    objects.emplace_back("\xA0");
    return binary(objects, {.numberBytes = 2});
  };
  EXPECT_TRUE(readPropertyList(nested(limits::kPropertyListDepth)).ok());
  expectRejected(nested(limits::kPropertyListDepth + 1), "nested too deeply");
  expectRejected(nested(5000), "nested too deeply");
}

}  // namespace
}  // namespace fexora::test
