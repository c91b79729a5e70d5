#include <exception>
#include <memory>

#include <expat.h>

#include "fexora/platform/plist/expat/ExpatLine.h"

#include "programs/sources/Source.h"

namespace fexora::sources {
namespace {

// What a throwing function throws must not pass through the parser, which is C: it is kept, and the
// parser is stopped.
class EuroParser {
 public:
  EuroParser(const std::string& name, Date undated)
      : rates_(name, undated), parser_(XML_ParserCreate(nullptr)) {
    if (parser_ == nullptr) throw std::bad_alloc();
    XML_SetUserData(parser_.get(), this);
    XML_SetStartElementHandler(parser_.get(), onElement);
    XML_SetStartDoctypeDeclHandler(parser_.get(), onDoctype);
  }

  RateCollector parse(const std::string& text) {
    const auto status =
        XML_Parse(parser_.get(), text.data(), static_cast<int>(text.size()), XML_TRUE);
    if (problem_) std::rethrow_exception(problem_);
    if (status != XML_STATUS_OK) {
      rates_.reject(line(), {}, XML_ErrorString(XML_GetErrorCode(parser_.get())));
    }
    return std::move(rates_);
  }

 private:
  struct Free {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
  };

  static void onElement(void* self, const char* name, const char** attributes) {
    static_cast<EuroParser*>(self)->guard([&](EuroParser& parser) {
      std::string_view local = name;
      local.remove_prefix(local.find(':') + 1);  // npos + 1 is 0
      if (local == "Cube") parser.takeCube(attributes);
    });
  }
  static void onDoctype(void* self, const char*, const char*, const char*, int) {
    static_cast<EuroParser*>(self)->guard(
        [](EuroParser& parser) { parser.rates_.reject(parser.line(), {}, "it has a DOCTYPE"); });
  }

  template <class Function>
  void guard(Function function) {
    if (problem_) return;
    try {
      function(*this);
    } catch (...) {
      problem_ = std::current_exception();
      XML_StopParser(parser_.get(), XML_FALSE);
    }
  }

  void takeCube(const char** attributes) {
    std::string_view time;
    std::string_view currency;
    std::string_view rate;
    for (; *attributes != nullptr; attributes += 2) {
      const std::string_view name = attributes[0];
      if (name == "time") time = attributes[1];
      if (name == "currency") currency = attributes[1];
      if (name == "rate") rate = attributes[1];
    }
    if (!time.empty()) {
      if (rates_.hasDate()) rates_.reject(line(), {}, "it holds more than one day");
      rates_.setDate(line(), time);
    }
    if (!currency.empty() || !rate.empty()) {
      rates_.add(line(), currency, rates_.number(line(), currency, rate), rate);
    }
  }

  std::size_t line() const { return currentLine(parser_.get()); }

  RateCollector rates_;
  std::unique_ptr<XML_ParserStruct, Free> parser_;
  std::exception_ptr problem_;
};

}  // namespace

Source readEuroXml(const std::string& name, const std::string& text, Date undated) {
  RateCollector rates = EuroParser(name, undated).parse(text);
  // A login page may be well-formed.
  if (rates.isEmpty()) rates.reject(0, {}, "it holds no reference rates");
  rates.setBase(0, "EUR");
  return std::move(rates).finish();
}

}  // namespace fexora::sources
