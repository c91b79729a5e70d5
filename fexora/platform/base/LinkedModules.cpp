// The static form: the modules are linked in, and the resources are the embedded copies.
#include "fexora/platform/base/Library.h"
#include "fexora/platform/base/ModuleEntries.h"

namespace fexora {

std::optional<std::string> libraryFolder() {
  return std::nullopt;
}

void* moduleEntry(std::string_view name, const char* entry, std::string& reason) {
  if (name == "loop") return reinterpret_cast<void*>(&fexora_loop_module);
  if (name == "text") return reinterpret_cast<void*>(&fexora_text_module);
  if (name == "xml") return reinterpret_cast<void*>(&fexora_xml_module);
  if (entry == std::string_view("fexora_net_own")) {
    return reinterpret_cast<void*>(&fexora_net_own);
  }
  if (name == "net") return reinterpret_cast<void*>(&fexora_net_module);
  if (name == "history") return reinterpret_cast<void*>(&fexora_history_module);
  reason = "there is no such module";
  return nullptr;
}

}  // namespace fexora
