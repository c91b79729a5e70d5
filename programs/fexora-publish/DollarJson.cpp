#include <algorithm>

#include <simdjson.h>

#include "programs/fexora-publish/Rejection.h"
#include "programs/fexora-publish/Source.h"

namespace fexora::publish {
namespace {

namespace ondemand = simdjson::ondemand;

// Reads on demand, since that reader alone can tell where a value stands in the text.
class DollarReader {
 public:
  DollarReader(const std::string& name, const std::string& text, Date undated)
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
      throw rejection(name_ + ": something follows its JSON object");
    }
    if (!seenRates_) throw rejection(name_ + ": it has no object \"usd\" of rates");
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
    } else if (key == "usd") {
      if (seenRates_) rates_.reject(line_, {}, "\"usd\" comes twice");
      seenRates_ = true;
      ondemand::object list;
      must(value.get_object().get(list));
      for (auto rate : list) takeRate(rate);
    }
  }

  void takeRate(Field field) {
    const std::string code = takeKey(field);
    ondemand::value value;
    must(field.value().get(value));
    const std::string_view text = value.raw_json_token();
    double rate = 0;
    if (value.get_double().get(rate) != simdjson::SUCCESS) {
      rates_.reject(line_, code,
                    "its rate is no usable number: " + std::string(text.substr(0, 40)));
    }
    // simdjson 3.0's on-demand reader misreads some reals of twenty digits and more.
    constexpr std::size_t kExactReal = 19;
    const auto end = text.find_last_not_of(" \t\r\n") + 1;
    if (end > kExactReal) rate = rates_.number(line_, code, text.substr(0, end));
    rates_.add(line_, code, rate);
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

Source readDollarJson(const std::string& name, const std::string& text, Date undated) {
  return DollarReader(name, text, undated).read();
}

}  // namespace fexora::publish
