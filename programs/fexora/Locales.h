// Locales that are asked for by name.
#pragma once

#include <string>

namespace fexora::program {

// Throws a Failure of kind "usage", which offers near ones, when nobody knows the language of
// `name`, the value of `option`. Plain English asks nothing.
void requireLocale(const char* option, const std::string& name);

}  // namespace fexora::program
