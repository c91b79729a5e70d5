#include <optional>
#include <vector>

#include <simdjson.h>

#include "fexora/history/TableText.h"
#include "fexora/platform/text/AsciiCase.h"
#include "fexora/records/Response.h"

#include "programs/sources/Source.h"
#include "programs/sources/TableMaker.h"

namespace fexora::sources {
namespace {

namespace ondemand = simdjson::ondemand;

// Reads on demand: that reader alone gives a number as it was printed, and where it stands.
class DailyReader {
 public:
  DailyReader(const std::string& name, std::string text, const TakeTable& take,
              PastReading& reading)
      : tables_(name, take, reading), text_(std::move(text)) {
    text_.reserve(text_.size() + simdjson::SIMDJSON_PADDING);
  }

  void read() {
    ondemand::parser parser;
    ondemand::document document;
    must(parser.iterate(text_).get(document));
    ondemand::object root;
    must(document.get_object().get(root));
    for (auto field : root) takeField(field);
    if (document.current_location().error() != simdjson::OUT_OF_BOUNDS) {
      tables_.reject(line_, {}, "something follows its JSON object");
    }
    handOut();
  }

 private:
  using Field = simdjson::simdjson_result<ondemand::field>;
  struct Figure {
    std::size_t line;
    std::string code;
    std::string text;
  };

  void must(simdjson::error_code error) const {
    if (error) tables_.reject(line_, {}, simdjson::error_message(error));
  }

  std::string takeKey(Field& field) {
    std::string_view key;
    const auto raw = field.key();
    must(raw.error());
    const auto offset = static_cast<std::size_t>(
        reinterpret_cast<const char*>(raw.value_unsafe().raw()) - text_.data());
    line_ += static_cast<std::size_t>(
        std::count(text_.begin() + static_cast<std::ptrdiff_t>(at_),
                   text_.begin() + static_cast<std::ptrdiff_t>(offset), '\n'));
    at_ = offset;
    must(field.unescaped_key().get(key));
    return std::string(key);
  }

  void takeField(Field field) {
    const std::string key = takeKey(field);
    ondemand::value value;
    must(field.value().get(value));
    ondemand::json_type type{};
    must(value.type().get(type));
    if (key == "base") {
      std::string_view text;
      must(value.get_string().get(text));
      base_ = text;
    } else if (key == "date" || key == "updated" || key == "timestamp") {
      takeDay(key, value, type);
    } else if (type == ondemand::json_type::object) {
      takeTable(key, value);
    } else if (type == ondemand::json_type::array && key == "rates") {
      takeList(value);
    }
  }

  // A day, with or without a time of it; else of a moment.
  void takeDay(const std::string& key, ondemand::value value, ondemand::json_type type) {
    constexpr std::size_t kDay = 10;
    std::string_view text;
    if (key == "date") {
      must(value.get_string().get(text));
      day_ = text.substr(0, kDay);
      hasDate_ = true;
    } else if (hasDate_) {
      return;
    } else if (type == ondemand::json_type::string) {
      must(value.get_string().get(text));
      if (dayFromIsoText(text.substr(0, kDay))) day_ = text.substr(0, kDay);
    } else if (type == ondemand::json_type::number) {
      takeMoment(value);
    }
  }

  void takeMoment(ondemand::value value) {
    double seconds = 0;
    must(value.get_double().get(seconds));
    Response answer;
    answer.setUpdated(seconds);
    if (const auto published = answer.published()) {
      day_ = isoText(dayOfMoment(published->secondsSince1970()));
    }
  }

  void beginRates() {
    if (hasRates_) tables_.reject(line_, {}, "its rates come twice");
    hasRates_ = true;
    figures_.clear();
    tableBase_.clear();
  }

  // {"usd": {"eur": 0.85}}, or {"base": "USD", "rates": {"EUR": 0.85}}
  void takeTable(const std::string& key, ondemand::value value) {
    if (key == "rates") {
      beginRates();
    } else {
      // Beside "rates" other objects say other things: "meta", "terms".
      if (hasRates_) return;
      ++others_;
      figures_.clear();
      tableBase_ = key;
    }
    ondemand::object list;
    must(value.get_object().get(list));
    for (auto field : list) {
      const std::string code = takeKey(field);
      ondemand::value figure;
      must(field.value().get(figure));
      figures_.push_back({line_, code, printed(figure)});
    }
  }

  // [{"code": "EUR", "rate": 0.85}] of a rates service
  void takeList(ondemand::value value) {
    beginRates();
    isService_ = true;
    ondemand::array list;
    must(value.get_array().get(list));
    for (auto entry : list) {
      ondemand::object fields;
      must(entry.get_object().get(fields));
      Figure figure{line_, {}, {}};
      for (Field field : fields) {
        const std::string key = takeKey(field);
        ondemand::value of;
        must(field.value().get(of));
        std::string_view text;
        if (key == "code") {
          must(of.get_string().get(text));
          figure.code = text;
        } else if (key == "rate") {
          figure.text = printed(of);
        }
      }
      figure.line = line_;
      figures_.push_back(std::move(figure));
    }
  }

  static std::string printed(ondemand::value value) {
    std::string_view text = value.raw_json_token();
    const auto end = text.find_last_not_of(" \t\r\n");
    text = text.substr(0, end == std::string_view::npos ? 0 : end + 1);
    // A service may send its rates as texts.
    if (text.size() > 2 && text.front() == '"' && text.back() == '"') {
      text = text.substr(1, text.size() - 2);
    }
    return std::string(text);
  }

  void handOut() {
    if (!hasRates_ && others_ == 0) tables_.reject(line_, {}, "it has no rates");
    if (!hasRates_ && others_ > 1) tables_.reject(line_, {}, "its rates come twice");
    if (day_.empty()) tables_.reject(line_, {}, "its rates name no day");
    const std::string base = tableBase_.empty() ? base_.value_or("USD") : tableBase_;
    if (!isTableCode(base)) tables_.reject(line_, {}, "its base is no currency code");
    const std::string source = isService_ ? "service" : ascii::lowercased(base);
    tables_.setSource(source, base);
    tables_.begin(line_, day_);
    for (const Figure& figure : figures_) tables_.add(figure.line, figure.code, figure.text);
    tables_.end();
  }

  TableMaker tables_;
  std::string text_;
  std::size_t at_ = 0;
  std::size_t line_ = 1;
  std::string day_;
  std::optional<std::string> base_;
  std::string tableBase_;  // where the table's own key is its base
  std::vector<Figure> figures_;
  bool hasRates_ = false;  // by that key
  int others_ = 0;         // objects by other keys before it
  bool hasDate_ = false;
  bool isService_ = false;
};

}  // namespace

void readDailyJson(const std::string& name, std::string text, const TakeTable& take,
                   PastReading& reading) {
  DailyReader(name, std::move(text), take, reading).read();
}

}  // namespace fexora::sources
