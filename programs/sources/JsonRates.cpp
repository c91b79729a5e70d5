#include <algorithm>
#include <optional>
#include <string_view>
#include <unordered_map>

#include "fexora/platform/json/simdjson/JsonDocument.h"
#include "fexora/platform/text/NumberText.h"
#include "fexora/records/Response.h"

#include "programs/sources/Source.h"
#include "programs/sources/SourceText.h"

namespace fexora::sources {
namespace {

class JsonReader {
 public:
  JsonReader(const std::string& name, const std::string& text, Date undated)
      : text_(text), lines_(linesOf(text)), rates_(name, undated) {}

  Source read() {
    const JsonDocument document(text_);
    if (document.state() != JsonDocument::State::value) rejectWhole(document.reason());
    if (const auto key = document.repeatedKey()) {
      rates_.reject(lineOf(*key), *key, "it is there twice");
    }
    const Value whole = document.whole();
    if (whole.dictionary() == nullptr) rejectWhole("it is no JSON object");
    hasRates_ = whole.dictionary()->find("rates") != nullptr;
    for (const auto& [key, value] : *whole.dictionary()) takeMember(key, value);
    if (!seenRates_) rejectWhole("it has no rates: neither an object \"usd\" nor \"rates\"");
    return std::move(rates_).finish();
  }

 private:
  // The parser does not tell where it stopped.
  [[noreturn]] void rejectWhole(const std::string& what) const {
    rates_.reject(text_.find('\n') == std::string::npos ? 1 : 0, {}, what);
  }

  // The line of the first such key or text; 0 when it is written in another way.
  std::size_t lineOf(const std::string& text) const {
    const auto at = lines_.find(text);
    return at != lines_.end() ? at->second : 0;
  }

  static std::unordered_map<std::string_view, std::size_t> linesOf(std::string_view text) {
    std::unordered_map<std::string_view, std::size_t> lines;
    std::size_t line = 1;
    for (std::size_t at = 0; at < text.size(); ++at) {
      line += text[at] == '\n' ? 1 : 0;
      if (text[at] != '"') continue;
      const std::size_t begin = ++at;
      while (at < text.size() && text[at] != '"') at += text[at] == '\\' ? 2 : 1;
      lines.try_emplace(text.substr(begin, std::min(at, text.size()) - begin), line);
    }
    return lines;
  }

  void takeMember(const std::string& key, const Value& value) {
    if (key == "date" || key == "updated" || key == "timestamp") return takeDate(key, value);
    if (key == "base" && value.string() != nullptr)
      return rates_.setBase(lineOf(key), *value.string());
    if (key == "rates") return takeRates(value);
    // Beside "rates" other objects say other things: "meta", "terms".
    const bool isTable = value.dictionary() != nullptr && RateCollector::isCode(key) && !hasRates_;
    if (key != "usd" && !isTable) return;
    rates_.setBase(lineOf(key), key);
    beginRates(key);
    if (value.dictionary() == nullptr) rates_.reject(lineOf(key), {}, "\"usd\" is no object");
    takeTable(*value.dictionary());
  }

  // A day, or seconds or milliseconds since 1970. The day of "date" counts more than a moment.
  void takeDate(const std::string& key, const Value& value) {
    constexpr std::size_t kDay = 10;
    if (hasDate_) return;
    if (value.string() != nullptr) {
      hasDate_ = key == "date";
      return rates_.setDate(lineOf(key), value.string()->substr(0, kDay));
    }
    if (value.number() == nullptr) return;
    Response answer;
    answer.setUpdated(*value.number());
    if (const auto published = answer.published()) rates_.setMoment(*published);
  }

  void beginRates(const std::string& key) {
    if (seenRates_) rates_.reject(lineOf(key), {}, "its rates come twice");
    seenRates_ = true;
  }

  void takeRates(const Value& value) {
    beginRates("rates");
    if (value.dictionary() != nullptr) return takeTable(*value.dictionary());
    if (value.array() == nullptr) {
      rates_.reject(lineOf("rates"), {}, "\"rates\" is neither an object nor a list");
    }
    for (const Value& entry : *value.array()) takeEntry(entry);
  }

  void takeTable(const Dictionary& table) {
    for (const auto& [code, rate] : table) {
      if (RateCollector::isCode(code)) {
        add(code, rate);
      } else {
        rates_.passOver();
      }
    }
  }

  // {"code": "EUR", "rate": 0.85}
  void takeEntry(const Value& entry) {
    const Dictionary* fields = entry.dictionary();
    const Value* code = fields != nullptr ? fields->find("code") : nullptr;
    if (code == nullptr || code->string() == nullptr) {
      rates_.reject(lineOf("rates"), {}, "an entry has no code");
    }
    const Value* rate = fields->find("rate");
    if (rate == nullptr) rates_.reject(lineOf(*code->string()), *code->string(), "it has no rate");
    add(*code->string(), *rate);
  }

  void add(const std::string& code, const Value& rate) {
    const NSNumber* const number = rate.number();
    if (number == nullptr || number->kind() == NSNumber::Kind::boolean) {
      const std::string shown =
          rate.string() != nullptr ? ": " + rate.string()->substr(0, kShownBytes) : std::string();
      rates_.reject(lineOf(code), code, "its rate is no usable number" + shown);
    }
    rates_.add(lineOf(code), code, number->doubleValue(), shortestText(number->doubleValue()));
  }

  const std::string& text_;
  std::unordered_map<std::string_view, std::size_t> lines_;
  RateCollector rates_;
  bool hasRates_ = false;
  bool hasDate_ = false;
  bool seenRates_ = false;
};

}  // namespace

Source readJson(const std::string& name, const std::string& text, Date undated) {
  return JsonReader(name, text, undated).read();
}

}  // namespace fexora::sources
