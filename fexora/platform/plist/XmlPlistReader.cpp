#include "fexora/platform/plist/XmlPlistReader.h"

#include <string>

#include "fexora/platform/base/Library.h"
#include "fexora/platform/plist/LaidOutPlistReader.h"

namespace fexora {
namespace {

// Null with a reason when there is none; looked for again at the next need then.
const XmlPlistModule* xmlModule(std::string& reason) {
  void* const entry = moduleEntry("xml", "fexora_xml_module", reason);
  return entry != nullptr ? reinterpret_cast<const XmlPlistModule* (*)()>(entry)() : nullptr;
}

}  // namespace

PlistResult readXmlPlist(std::string_view bytes) {
  PlistResult fast;
  if (LaidOutPlistReader(bytes).readFile(fast.value)) return fast;
  std::string reason;
  const XmlPlistModule* const module = xmlModule(reason);
  if (module == nullptr) {
    return {{}, "there is no module for this form: " + reason, PlistFault::module};
  }
  return module->read(bytes);
}

}  // namespace fexora
