// Names of currencies from a gettext domain of the host's, whose message ids are the codes.
#pragma once

#include <optional>
#include <string>

#include <fexora/fexora.h>
#include <libintl.h>

class DomainStrings final : public fexora::HostStrings {
 public:
  std::optional<std::string> string(std::string_view key) override {
    const std::string code(key);
    const char* const name = dgettext("my-app", code.c_str());  // code itself when there is none
    if (name != code.c_str()) return name;
    return std::nullopt;
  }
  // No promise when the language may change while the program runs: 0 would say so.
  std::uint64_t generation() override { return 1; }
};
