// Options of a command line, read and explained by CLI11, which is in this one source of the
// programs since nothing else takes as long to compile.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "programs/shared/Words.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace fexora::program {

// CLI11 is told of the options that were written alone, since it takes time over each at every
// start, and of all where there is help to give or an error to explain.
//
// What is added here is written by read() and outlives the reader. Each `type` names the value in
// the help, like "NAME". Whatever is not given stays as it was.
class OptionReader {
 public:
  // `helpNames` like "-h,--help"; each name and text given here lives as long as the reader.
  OptionReader(std::string purpose, std::string program, const char* helpNames);
  ~OptionReader();
  OptionReader(const OptionReader&) = delete;
  OptionReader& operator=(const OptionReader&) = delete;

  void addFlag(const char* name, bool& flag, const char* purpose);
  void addText(const char* name, std::string& text, const char* type, const char* purpose);
  void addTexts(const char* name, std::vector<std::string>& texts, const char* type,
                const char* purpose);
  // A number as NumberText.h reads it. CLI11 itself takes 010 for 8, and a number that is too large
  // for the largest.
  void addNumber(const char* name, std::optional<std::int64_t>& number, const char* type,
                 const char* purpose);
  void addNumber(const char* name, std::optional<double>& number, const char* type,
                 const char* purpose);
  // Takes each value as it comes, so that the order among several options counts.
  void addEach(const char* name, std::function<void(const std::string&)> take, const char* type,
               const char* purpose);
  // A text below the options in the help, made when there is some.
  void setFooter(std::string (*text)()) { footer_ = text; }

  // Options as sortWords() makes them. False when help was asked for. Throws an OptionError; of a
  // name that is none of the options with the nearest one that is.
  bool read(std::vector<std::string> options);

  // The help with the operands named in it, without a line end.
  std::string help(std::string_view operands) const;

 private:
  struct Added {
    std::string_view name;
    std::function<void(CLI::App&)> tell;
  };

  template <class Number, class Parse>
  void addParsed(const char* name, std::optional<Number>& number, const char* type,
                 const char* purpose, Parse parse);
  // Makes an app that knows the added options, those alone that are in `written` where there is
  // such.
  void tell(const std::vector<std::string>* written);
  void readAll(std::vector<std::string> options);
  std::vector<std::string> names() const;

  std::string purpose_;
  std::string program_;
  const char* helpNames_;
  std::string (*footer_)() = nullptr;
  std::vector<Added> added_;
  std::unique_ptr<CLI::App> app_;
};

// What a flag's own value says, like the "true" of --json=true; nothing when it is no such word.
std::optional<bool> flagValue(const std::string& text);

}  // namespace fexora::program
