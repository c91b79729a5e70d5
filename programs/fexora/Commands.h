// The commands of the program. Each prints its result and throws a Failure when it cannot.
#pragma once

#include "fexora/fexora.h"

#include "programs/fexora/CommandLine.h"
#include "programs/shared/Failure.h"
#include "programs/shared/JsonText.h"

namespace fexora::program {

// Exit::noCurrency when some of the currencies are missing from what it printed.
Exit convert(const CommandLine& line);
void select(const CommandLine& line);
void settings(const CommandLine& line);
void search(const CommandLine& line);
void refresh(const CommandLine& line);
Exit history(const CommandLine& line);
void watch(const CommandLine& line);
void status(const CommandLine& line);

// The settings by name, and one as people see it.
std::vector<std::string> settingNames();
std::string settingText(const std::string& name, const StoreManager& store);
// Adds the object of the eight settings by property name, without where rates come from.
void addSettings(JsonText& json, const StoreManager& store);

}  // namespace fexora::program
