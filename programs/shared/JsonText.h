// Writes JSON text piece by piece: commas are its own affair, nesting the caller's.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace fexora::program {

class JsonText {
 public:
  JsonText& beginObject() { return open('{'); }
  JsonText& endObject() { return close('}'); }
  JsonText& beginArray() { return open('['); }
  JsonText& endArray() { return close(']'); }
  JsonText& key(std::string_view name);

  // Bytes that are no UTF-8 become U+FFFD, in keys too.
  JsonText& string(std::string_view value);
  // Shortest so that it reads back to the same double; infinite and not-a-number as null.
  JsonText& number(double value);
  JsonText& integer(std::int64_t value);
  JsonText& boolean(bool value) { return raw(value ? "true" : "false"); }
  JsonText& null() { return raw("null"); }
  JsonText& stringOrNull(const std::optional<std::string>& value);
  JsonText& numberOrNull(const std::optional<double>& value);

  const std::string& text() const { return text_; }

 private:
  JsonText& open(char bracket);
  JsonText& close(char bracket);
  JsonText& raw(std::string_view value);
  void separate();
  void quote(std::string_view value);

  std::string text_;
  bool first_ = true;  // nothing stands yet at this level, or a key has just been written
};

}  // namespace fexora::program
