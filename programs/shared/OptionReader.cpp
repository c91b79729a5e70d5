#include "programs/shared/OptionReader.h"

#include <algorithm>
#include <utility>

#include <CLI/CLI.hpp>

#include "fexora/platform/text/NumberText.h"

namespace fexora::program {

OptionReader::OptionReader(std::string purpose, std::string program, const char* helpNames)
    : purpose_(std::move(purpose)), program_(std::move(program)), helpNames_(helpNames) {}

OptionReader::~OptionReader() = default;

void OptionReader::addFlag(const char* name, bool& flag, const char* purpose) {
  added_.push_back({name, [=, &flag](CLI::App& app) { app.add_flag(name, flag, purpose); }});
}

void OptionReader::addText(const char* name, std::string& text, const char* type,
                           const char* purpose) {
  added_.push_back(
      {name, [=, &text](CLI::App& app) { app.add_option(name, text, purpose)->type_name(type); }});
}

void OptionReader::addTexts(const char* name, std::vector<std::string>& texts, const char* type,
                            const char* purpose) {
  added_.push_back({name, [=, &texts](CLI::App& app) {
                      app.add_option(name, texts, purpose)->type_name(type);
                    }});
}

template <class Number, class Parse>
void OptionReader::addParsed(const char* name, std::optional<Number>& number, const char* type,
                             const char* purpose, Parse parse) {
  const auto take = [&number, parse, name](const std::string& text) {
    number = parse(text);
    if (!number) throw CLI::ConversionError(text, name);
  };
  added_.push_back({name, [=](CLI::App& app) {
                      app.add_option_function<std::string>(name, take, purpose)->type_name(type);
                    }});
}

void OptionReader::addNumber(const char* name, std::optional<std::int64_t>& number,
                             const char* type, const char* purpose) {
  addParsed(name, number, type, purpose, parseInteger);
}

void OptionReader::addNumber(const char* name, std::optional<double>& number, const char* type,
                             const char* purpose) {
  addParsed(name, number, type, purpose, parseDouble);
}

void OptionReader::addEach(const char* name, std::function<void(const std::string&)> take,
                           const char* type, const char* purpose) {
  added_.push_back({name, [=, take = std::move(take)](CLI::App& app) {
                      app.add_option_function<std::string>(name, take, purpose)
                          ->type_name(type)
                          ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast)
                          ->trigger_on_parse();
                    }});
}

void OptionReader::tell(const std::vector<std::string>* written) {
  const auto isWanted = [written](std::string_view name) {
    return written == nullptr ||
           std::any_of(written->begin(), written->end(), [name](std::string_view option) {
             return option.substr(0, option.find('=')) == name;
           });
  };
  app_ = std::make_unique<CLI::App>(purpose_, program_);
  app_->set_help_flag(helpNames_, "Print this help");
  if (written == nullptr && footer_ != nullptr) app_->footer(footer_());
  for (const Added& each : added_) {
    if (isWanted(each.name)) each.tell(*app_);
  }
}

std::vector<std::string> OptionReader::names() const {
  std::vector<std::string> names;
  for (const CLI::Option* option : std::as_const(*app_).get_options()) {
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  }
  return names;
}

void OptionReader::readAll(std::vector<std::string> options) {
  const auto typed = options;
  try {
    tell(nullptr);
    app_->parse(std::move(options));
  } catch (const CLI::ExtrasError&) {
    for (auto option = typed.rbegin(); option != typed.rend(); ++option) {
      const std::string name = option->substr(0, option->find('='));
      if (app_->get_option_no_throw(name) != nullptr) continue;
      throw OptionError("there is no option " + name + offerOf(name, names()));
    }
    throw;
  }
}

bool OptionReader::read(std::vector<std::string> options) try {
  try {
    tell(&options);
    app_->parse(std::vector(options));
  } catch (const CLI::Error&) {
    readAll(std::move(options));
  }
  return true;
} catch (const CLI::CallForHelp&) {
  return false;
} catch (const CLI::Error& error) {
  throw OptionError(error.what());
}

std::string OptionReader::help(std::string_view operands) const {
  constexpr std::string_view kOptions = "[OPTIONS]";
  std::string text = app_->help();
  const auto at = text.find(kOptions);
  if (at != std::string::npos && !operands.empty()) {
    text.insert(at + kOptions.size(), " " + std::string(operands));
  }
  while (text.ends_with('\n')) text.pop_back();
  return text;
}

std::optional<bool> flagValue(const std::string& text) {
  bool value = false;
  if (!CLI::detail::lexical_cast(text, value)) return std::nullopt;
  return value;
}

}  // namespace fexora::program
