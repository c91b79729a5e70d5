#include <algorithm>
#include <optional>

#include <simdjson.h>

#include "fexora/records/Response.h"

#include "programs/sources/Source.h"

namespace fexora::sources {
namespace {

namespace ondemand = simdjson::ondemand;

// Reads on demand, since that reader alone can tell where a value stands in the text.
class JsonReader {
 public:
  JsonReader(const std::string& name, const std::string& text, Date undated)
      : name_(name), rates_(name, undated) {
    text_.reserve(text.size() + simdjson::SIMDJSON_PADDING);
    text_ = text;
  }

  Source read() {
    ondemand::parser parser;
    ondemand::document document;
    must(parser.iterate(text_).get(document));
    ondemand::object root;
    must(document.get_object().get(root));
    for (auto field : root) takeField(field);
    if (document.current_location().error() != simdjson::OUT_OF_BOUNDS) {
      throw SourceProblem{name_ + ": something follows its JSON object"};
    }
    if (!seenRates_)
      throw SourceProblem{name_ + ": it has neither an object \"usd\" nor a list \"rates\""};
    return std::move(rates_).finish();
  }

 private:
  using Field = simdjson::simdjson_result<ondemand::field>;

  void must(simdjson::error_code error) const {
    if (error) rates_.reject(line_, {}, simdjson::error_message(error));
  }

  // The key, with the current line set to its own.
  std::string takeKey(Field& field) {
    std::string_view key;
    const auto raw = field.key();
    must(raw.error());
    moveTo(raw.value_unsafe().raw());
    must(field.unescaped_key().get(key));
    return std::string(key);
  }

  void takeField(Field field) {
    const std::string key = takeKey(field);
    ondemand::value value;
    must(field.value().get(value));
    if (key == "date") {
      std::string_view day;
      must(value.get_string().get(day));
      rates_.setDate(line_, day);
    } else if (key == "updated") {
      double seconds = 0;
      must(value.get_double().get(seconds));
      Response answer;
      answer.setUpdated(seconds);
      if (const auto published = answer.published()) rates_.setMoment(*published);
    } else if (key == "usd") {
      beginRates();
      ondemand::object list;
      must(value.get_object().get(list));
      for (auto rate : list) takeRate(rate);
    } else if (key == "rates") {
      beginRates();
      ondemand::array list;
      must(value.get_array().get(list));
      for (auto entry : list) takeEntry(entry);
    }
  }

  void beginRates() {
    if (seenRates_) rates_.reject(line_, {}, "its rates come twice");
    seenRates_ = true;
  }

  void takeRate(Field field) {
    const std::string code = takeKey(field);
    ondemand::value value;
    must(field.value().get(value));
    rates_.add(line_, code, figure(code, value));
  }

  // {"code": "EUR", "rate": 0.85}, in either order.
  void takeEntry(simdjson::simdjson_result<ondemand::value> entry) {
    ondemand::object fields;
    must(entry.get_object().get(fields));
    std::string code;
    std::optional<double> rate;
    for (Field field : fields) {
      const std::string key = takeKey(field);
      ondemand::value value;
      must(field.value().get(value));
      std::string_view text;
      if (key == "code") {
        must(value.get_string().get(text));
        code = text;
      } else if (key == "rate") {
        rate = figure(code, value);
      }
    }
    if (!rate) rates_.reject(line_, code, "it has no rate");
    rates_.add(line_, code, *rate);
  }

  double figure(const std::string& code, ondemand::value value) const {
    const std::string_view text = value.raw_json_token();
    double rate = 0;
    if (value.get_double().get(rate) != simdjson::SUCCESS) {
      rates_.reject(line_, code,
                    "its rate is no usable number: " + std::string(text.substr(0, 40)));
    }
    // simdjson 3.0's on-demand reader misreads some reals of twenty digits and more.
    constexpr std::size_t kExactReal = 19;
    const auto end = text.find_last_not_of(" \t\r\n") + 1;
    return end > kExactReal ? rates_.number(line_, code, text.substr(0, end)) : rate;
  }

  // Counts the lines up to a place after the last one.
  template <class Pointer>
  void moveTo(Pointer place) {
    const auto offset =
        static_cast<std::size_t>(reinterpret_cast<const char*>(place) - text_.data());
    line_ += static_cast<std::size_t>(
        std::count(text_.begin() + static_cast<std::ptrdiff_t>(at_),
                   text_.begin() + static_cast<std::ptrdiff_t>(offset), '\n'));
    at_ = offset;
  }

  const std::string& name_;
  std::string text_;
  RateCollector rates_;
  std::size_t at_ = 0;
  std::size_t line_ = 1;
  bool seenRates_ = false;
};

}  // namespace

Source readJson(const std::string& name, const std::string& text, Date undated) {
  return JsonReader(name, text, undated).read();
}

}  // namespace fexora::sources
