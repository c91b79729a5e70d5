// The store file in both encodings, read plainly and by the codec, which must agree with each
// other; and what was read, written again.
#include <string>
#include <utility>

#include "fexora/platform/plist/DictionaryCodec.h"
#include "fexora/platform/plist/PropertyListReader.h"
#include "fexora/platform/plist/PropertyListWriter.h"
#include "fexora/platform/plist/XmlPlistWriter.h"

#include "fuzz/Target.h"
#include "tests/support/Describe.h"

namespace fexora::fuzz {
namespace {

// A file of a few bytes may name one object many times over; writing that out tests nothing more.
constexpr std::size_t kLongDescription = 1 << 18;

void checkDecoding(DictionaryCodec& codec, const std::string& bytes) {
  const PlistResult plain = readPropertyList(bytes);
  const auto decoded = codec.decode(bytes);
  require(decoded.ok() == (plain.ok() && plain.value.dictionary() != nullptr),
          "the codec accepts what the reader accepts");
  require(plain.ok() || decoded.error == plain.error, "both give the same reason");
  if (!decoded.ok()) return;
  require(test::describe(decoded.dictionary) == test::describe(plain.value),
          "the codec reads what the reader reads");
}

// After the codec has read or written `last`: byte for byte what the writer writes, unless keys of
// `last` stand in another form there and keep it.
void checkEncoding(DictionaryCodec& codec, const Dictionary& dictionary, std::string_view last) {
  const PlistBytes plain = writePropertyList(dictionary);
  const auto encoded = codec.encode(dictionary);
  require(encoded.ok() && plain.ok(), "the codec writes what the writer writes");
  if (last == plain.bytes) require(encoded.bytes == plain.bytes, "and in the same form");
  const PlistResult again = readPropertyList(encoded.bytes);
  require(again.ok() && test::describe(again.value) == test::describe(dictionary),
          "what the codec writes reads back");
}

// A comment after the head means nothing in XML, and keeps a file from the fast way.
void checkFastWay(const std::string& bytes) {
  if (!bytes.starts_with(kXmlPlistHead)) return;
  std::string other = bytes;
  other.insert(kXmlPlistHead.size(), "<!---->");
  const PlistResult fast = readPropertyList(bytes);
  const PlistResult slow = readPropertyList(other);
  require(fast.error == slow.error, "both ways of reading reject the same");
  require(test::describe(fast.value) == test::describe(slow.value), "both ways read the same");
}

// Values changed, added, replaced by an equal one, and removed.
void checkEdits(DictionaryCodec& codec, Dictionary dictionary, std::string_view bytes) {
  for (std::size_t i = 0; i + 2 < bytes.size() && i < 12 && !dictionary.empty(); i += 3) {
    const auto& entry = dictionary.begin()[static_cast<std::uint8_t>(bytes[i]) % dictionary.size()];
    const std::string key = entry.first;
    switch (static_cast<std::uint8_t>(bytes[i + 1]) % 4U) {
      case 0:
        dictionary.remove(key);
        break;
      case 1:
        dictionary.set(key + "+", Array{entry.second});
        break;
      case 2:
        dictionary.set(key, Value(entry.second));
        break;
      default:
        dictionary.set(key, static_cast<std::uint8_t>(bytes[i + 2]));
    }
    // Nested too deep or with too much in it, it cannot be written.
    if (writePropertyList(dictionary).ok()) checkEncoding(codec, dictionary, {});
  }
}

// The codec with the last file in mind and a file that differs in some places of the fuzzer's
// choice.
void checkChanges(const std::string& written, std::string_view bytes) {
  DictionaryCodec codec;
  checkDecoding(codec, written);
  std::string changed = written;
  for (std::size_t i = 0; i + 3 < bytes.size() && i < 12; i += 4) {
    const auto at = static_cast<std::size_t>(static_cast<std::uint8_t>(bytes[i]) * 256U +
                                             static_cast<std::uint8_t>(bytes[i + 1])) %
                    changed.size();
    changed.replace(at, static_cast<std::uint8_t>(bytes[i + 2]) % 4U, 1, bytes[i + 3]);
    checkDecoding(codec, changed);
    checkFastWay(changed);
  }
  checkDecoding(codec, written);
  Dictionary dictionary = *readPropertyList(written).value.dictionary();
  checkEncoding(codec, dictionary, written);
  checkEdits(codec, std::move(dictionary), bytes);
}

void run(std::string_view bytes) {
  const PlistResult read = readPropertyList(bytes);
  DictionaryCodec codec;
  checkDecoding(codec, std::string(bytes));
  checkFastWay(std::string(bytes));
  if (!read.ok()) return;
  if (test::describe(read.value).size() > kLongDescription) return;
  const PlistBytes written = writePropertyList(read.value);
  require(written.ok(), "what can be read can be written");
  const PlistResult again = readPropertyList(written.bytes);
  require(again.ok(), "what was written can be read");
  // Dates lose their fractions at the first writing; after that nothing changes any more.
  require(writePropertyList(again.value).bytes == written.bytes, "writing settles at once");
  if (again.value.dictionary() == nullptr) return;
  checkEncoding(codec, *again.value.dictionary(), bytes);
  checkChanges(written.bytes, bytes);
}

}  // namespace
}  // namespace fexora::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fexora::fuzz::run(fexora::fuzz::textOf(data, size));
  return 0;
}
