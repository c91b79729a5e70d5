// The codec is compared with the plain reader and writer throughout; so it is in fuzz/store.cpp,
// with files and changes at random.
#include "fexora/platform/plist/DictionaryCodec.h"

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "fexora/platform/base/Limits.h"
#include "fexora/platform/mapping/MapSource.h"
#include "fexora/platform/plist/PropertyListReader.h"
#include "fexora/platform/plist/PropertyListWriter.h"
#include "fexora/platform/plist/XmlPlistWriter.h"

#include "tests/support/Describe.h"

namespace fexora::test {
namespace {

std::string written(const Dictionary& dictionary) {
  return writePropertyList(dictionary).bytes;
}

void expectEncodes(DictionaryCodec& codec, const Dictionary& dictionary) {
  const PlistBytes plain = writePropertyList(dictionary);
  const DictionaryCodec::Encoded encoded = codec.encode(dictionary);
  EXPECT_EQ(encoded.error, "");
  EXPECT_TRUE(encoded.bytes == plain.bytes);
}

// Gives what was decoded, for looking closer.
Dictionary expectDecodes(DictionaryCodec& codec, const std::string& bytes) {
  const PlistResult plain = readPropertyList(bytes);
  const DictionaryCodec::Decoded decoded = codec.decode(bytes);
  const bool isDictionary = plain.ok() && plain.value.dictionary() != nullptr;
  EXPECT_EQ(decoded.error, plain.ok() && !isDictionary ? "the root is no dictionary" : plain.error);
  if (isDictionary) {
    EXPECT_TRUE(sameDescription(describe(decoded.dictionary), describe(plain.value)));
  }
  return decoded.dictionary;
}

std::string replaced(std::string text, std::string_view from, std::string_view to) {
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

TEST(DictionaryCodec, UnchangedKeys_KeepTheirValue) {
  const Dictionary first{{"A", Array{"x", 1}}, {"B", Dictionary{{"k", 2.5}}}, {"C", "text"}};
  DictionaryCodec codec;
  const Dictionary once = expectDecodes(codec, written(first));
  Dictionary changed = first;
  changed.set("B", 7);
  changed.set("AA", true);
  const Dictionary twice = expectDecodes(codec, written(changed));
  for (const char* key : {"A", "C"}) EXPECT_TRUE(twice.find(key)->sameAs(*once.find(key)));
  // What was written counts as the last file, too.
  const Dictionary mine{{"A", Array{"mine"}}};
  expectEncodes(codec, mine);
  EXPECT_TRUE(expectDecodes(codec, written(mine)).find("A")->sameAs(*mine.find("A")));
}

TEST(DictionaryCodec, AnotherForm_StaysUntilItsValueChanges) {
  Dictionary dictionary{{"A", 1.5}, {"B", true}};
  const std::string odd = replaced(written(dictionary), "1.5", "1.50");
  DictionaryCodec codec;
  dictionary = expectDecodes(codec, odd);
  EXPECT_EQ(codec.encode(dictionary).bytes, odd);
  dictionary.set("A", 2.5);
  expectEncodes(codec, dictionary);
}

TEST(DictionaryCodec, Unwritable_KeepsWhatTheFileHasAndTheRestIsWritten) {
  const Value odd[] = {Value(), "\x01", Array{Date(1e300)}};
  // Laid out as it is written, and in a form that is read whole.
  for (const std::string& before :
       {std::string(), written({{"B", 1}}), replaced(written({{"B", 1}}), "<dict>\n", "<dict>")}) {
    for (const Value& value : odd) {
      DictionaryCodec codec;
      Dictionary kept{{"A", Array{1}}, {"C", "c"}};
      if (!before.empty()) kept.set("B", *expectDecodes(codec, before).find("B"));
      Dictionary all = kept;
      all.set("B", value);
      const auto encoded = codec.encode(all);
      EXPECT_TRUE(encoded.bytes == written(kept));
      EXPECT_TRUE(encoded.error.starts_with("B")) << encoded.error;
      all.set("\x02", 1);
      EXPECT_TRUE(codec.encode(all).error.ends_with(", and 1 more"));
      all.remove("\x02");
      // Its neighbours are still copied, and it is written once it can be.
      EXPECT_TRUE(codec.encode(all).bytes == written(kept));
      all.set("B", 2);
      expectEncodes(codec, all);
    }
  }
  // What is there has room before what is new.
  DictionaryCodec codec;
  const Value half(std::string(limits::kStoreFileBytes / 2, 'x'));
  const std::size_t size = codec.encode(Dictionary{{"B", half}}).bytes.size();
  const auto encoded = codec.encode(Dictionary{{"A", half}, {"B", half}});
  EXPECT_TRUE(encoded.error.starts_with("A: a file of")) << encoded.error;
  EXPECT_EQ(encoded.bytes.size(), size);
}

TEST(DictionaryCodec, ValuesThatTheFileRounds_AreReadFromTheFile) {
  DictionaryCodec codec;
  const Dictionary halves{{"Date", Date(0.5)}, {"In", Array{Date(1.5)}}};
  expectEncodes(codec, halves);
  expectEncodes(codec, halves);
  EXPECT_EQ(describe(expectDecodes(codec, written(halves))),
            describe(Dictionary{{"Date", Date(0.0)}, {"In", Array{Date(1.0)}}}));
}

TEST(DictionaryCodec, TextThatLooksLikeAKey_MisleadsNothing) {
  const Dictionary plain{{"A", "1"}, {"B", "2"}, {"C", "3"}};
  const std::string whole = written(plain);
  const auto with = [&](std::string_view from, const std::string& to) {
    return replaced(whole, from, to);
  };
  const std::string b = "\t<key>B</key>\n\t<string>2</string>\n";
  const std::string a = "<string>1</string>";
  const std::vector<std::string> files = {
      // Inside a comment, inside a CDATA section, after the end, in a nested dictionary.
      with(b, "<!--\n" + b + "-->\n"),
      with(b, "\t<key>B</key>\n\t<string><![CDATA[\n" + b + "]]></string>\n"),
      with(a + "\n", a + "<!--\n" + b + "-->\n"),
      with(a, "<string><![CDATA[\n" + b + "</dict>\n</plist>\n]]></string>"),
      with(a, "<array><dict>\n" + b + "</dict></array>"),
      with(a, "<string>1<!-- </string>\n" + b + "--></string>"), whole + b,
      whole + "<!--\n</dict>\n</plist>\n-->\n", with("</dict>\n", "<!--\n</dict>\n</plist>\n-->"),
      // The same key twice, keys out of order, a key that only ends like one.
      with(b, b + "\t<key>B</key>\n\t<true/>\n"), replaced(with(b, ""), "\t<key>A", b + "\t<key>A"),
      with("<key>B</key>", "<key>A&#66;</key>"), with("<key>B</key>", "<key>&#65;</key>"),
      with("<key>B</key>", "<key>B&amp;</key>"), with("<dict>\n", "<dict>"),
      with("plist PUBLIC", "plist  PUBLIC"), with("<dict>", "<array>"), std::string()};
  for (const std::string& file : files) {
    DictionaryCodec cold;
    expectDecodes(cold, file);
    DictionaryCodec warm;
    expectDecodes(warm, whole);
    expectDecodes(warm, file);
    expectDecodes(warm, whole);
  }
}

std::string listOf(const std::vector<std::string>& records) {
  std::string list = "<dict>\n\t<key>L</key>\n\t<array>\n";
  for (const std::string& record : records) list += "\t\t<dict>\n" + record + "\t\t</dict>\n";
  list += "\t</array>\n</dict>\n";
  return std::string(kXmlPlistHead) + list + std::string(kXmlPlistTail);
}

std::string field(const std::string& key, const std::string& value) {
  return "\t\t\t<key>" + key + "</key>\n\t\t\t" + value + "\n";
}

std::string fieldsOf(const MapSource& record) {
  std::string fields;
  Value scratch;
  for (const char* key : {"code", "rate"}) {
    const Value* value = record.find(key, scratch);
    fields += value != nullptr ? describe(*value) : "none";
  }
  return fields;
}

const std::string kRate = field("code", "<string>EUR</string>") + field("rate", "<real>0.5</real>");

// Left in the bytes or not, and asked for in whichever way: it is what the plain reader reads.
TEST(DictionaryCodec, ListsOfRecords_ReadAsAnyOther) {
  struct Case {
    std::string eighth;
    bool isLeft;
  };
  const std::vector<Case> cases = {
      {kRate, true},
      {field("code", "<string></string>") + field("rate", "<integer>-7</integer>"), true},
      {field("code", "<string>\u00e9</string>") + field("rate", "<real>-1.5e+300</real>"), true},
      {field("code", "<string>a b</string>") + field("rate", "<real>nan</real>"), true},
      {field("code", "<real>1</real>") + field("rate", "<string>0,9</string>"), true},
      {field("code", "<string>a</string>") +
           field("rate", "<integer>9223372036854775807</integer>"),
       true},
      {field("code", "<string>a</string>") +
           field("rate", "<integer>9223372036854775808</integer>"),
       false},
      {field("code", "<string>a&amp;b</string>") + field("rate", "<real>1</real>"), false},
      {field("code", "<string>a</string>") + field("rate", "<real>-</real>"), false},
      {field("code", "<string>a</string>") + field("rate", "<real></real>"), false},
      // Eight at a time, and one that is none among them.
      {field("code", "<string>a</string>") + field("rate", "<real>-12345678.123456789</real>"),
       true},
      {field("code", "<string>a</string>") + field("rate", "<real>1234567:.12345678</real>"),
       false},
      {field("code", "<string>a</string>") + field("rate", "<real>0.123/45678</real>"), false},
      {field("code", "<string>a</string>") + field("rate", "<true/>"), false},
      {field("code", "<string>a</string>"), false},
      {"", false},
  };
  for (const Case& each : cases) {
    std::vector<std::string> records(9, kRate);
    records[7] = each.eighth;
    DictionaryCodec codec;
    const Dictionary read = expectDecodes(codec, listOf(records));
    const Value* const list = read.find("L");
    EXPECT_EQ(list != nullptr && list->deferred() != nullptr, each.isLeft) << each.eighth;
    if (list == nullptr) continue;
    // By its elements, and without asking for them.
    std::string elements;
    for (const Value& element : *list->array()) {
      elements += fieldsOf(DictionarySource(*element.dictionary()));
    }
    std::string visited;
    std::size_t shown = 0;
    visitDictionaries(*list, [&](const MapSource& record, std::size_t left) {
      EXPECT_EQ(left, *countDictionaries(*list) - shown++);
      visited += fieldsOf(record);
    });
    EXPECT_EQ(visited, elements);
  }
  // A key twice, more keys than are kept, and too few records.
  DictionaryCodec codec;
  expectDecodes(codec,
                listOf(std::vector<std::string>(9, kRate + field("code", "<real>2</real>"))));
  expectDecodes(codec, listOf(std::vector<std::string>(9, kRate + kRate + kRate)));
  expectDecodes(codec, listOf(std::vector<std::string>(7, kRate)));
}

TEST(DictionaryCodec, ListOfRecordsWithADamage_IsRejectedOrReadAsAnyOther) {
  const std::string whole = listOf(std::vector<std::string>(9, kRate));
  for (std::size_t at = whole.find("<array>"); at < whole.size(); ++at) {
    for (const char damage : {'<', '-', '\t', '&', '\x80', '1'}) {
      std::string bytes = whole;
      bytes[at] = damage;
      DictionaryCodec codec;
      expectDecodes(codec, bytes);
    }
  }
}

TEST(DictionaryCodec, ManyKeys_AreWrittenAndReadWhole) {
  Dictionary many;
  for (int i = 0; i < 3000; ++i) many.set("k" + std::to_string(i), i);
  DictionaryCodec codec;
  expectEncodes(codec, many);
  expectDecodes(codec, written(many));
  expectEncodes(codec, Dictionary{{"A", 1}});
  expectDecodes(codec, written({}));
}

}  // namespace
}  // namespace fexora::test
