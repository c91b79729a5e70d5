#include <exception>
#include <memory>

#include <expat.h>

#include "fexora/platform/plist/expat/ExpatLine.h"

#include "programs/sources/Source.h"
#include "programs/sources/TableMaker.h"

namespace fexora::sources {
namespace {

// What a throwing function throws must not pass through the parser, which is C: it is kept, and the
// parser is stopped.
class DaysParser {
 public:
  DaysParser(const std::string& name, const TakeTable& take, PastReading& reading)
      : tables_(name, take, reading), parser_(XML_ParserCreate(nullptr)) {
    if (parser_ == nullptr) throw std::bad_alloc();
    tables_.setSource("ecb", "EUR");
    XML_SetUserData(parser_.get(), this);
    XML_SetStartElementHandler(parser_.get(), onElement);
    XML_SetStartDoctypeDeclHandler(parser_.get(), onDoctype);
  }

  void parse(const NextPiece& next) {
    for (std::string_view piece = next();; piece = next()) {
      const bool isLast = piece.empty();
      const auto status = XML_Parse(parser_.get(), piece.data(), static_cast<int>(piece.size()),
                                    isLast ? XML_TRUE : XML_FALSE);
      if (problem_) std::rethrow_exception(problem_);
      if (status != XML_STATUS_OK) {
        tables_.reject(line(), {}, XML_ErrorString(XML_GetErrorCode(parser_.get())));
      }
      if (isLast) break;
    }
    tables_.end();
  }

 private:
  struct Free {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
  };

  static void onElement(void* self, const char* name, const char** attributes) {
    static_cast<DaysParser*>(self)->guard([&](DaysParser& parser) {
      std::string_view local = name;
      local.remove_prefix(local.find(':') + 1);  // npos + 1 is 0
      if (local == "Cube") parser.takeCube(attributes);
    });
  }
  static void onDoctype(void* self, const char*, const char*, const char*, int) {
    static_cast<DaysParser*>(self)->guard(
        [](DaysParser& parser) { parser.tables_.reject(parser.line(), {}, "it has a DOCTYPE"); });
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
    std::string_view currency;
    std::string_view rate;
    for (; *attributes != nullptr; attributes += 2) {
      const std::string_view name = attributes[0];
      if (name == "time") tables_.begin(line(), attributes[1]);
      if (name == "currency") currency = attributes[1];
      if (name == "rate") rate = attributes[1];
    }
    if (!currency.empty() || !rate.empty()) tables_.add(line(), currency, rate);
  }

  std::size_t line() const { return currentLine(parser_.get()); }

  TableMaker tables_;
  std::unique_ptr<XML_ParserStruct, Free> parser_;
  std::exception_ptr problem_;
};

}  // namespace

void readEuroDays(const std::string& name, const NextPiece& next, const TakeTable& take,
                  PastReading& reading) {
  DaysParser(name, take, reading).parse(next);
}

}  // namespace fexora::sources
