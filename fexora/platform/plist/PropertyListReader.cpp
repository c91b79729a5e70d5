#include "fexora/platform/plist/PropertyListReader.h"

#include "fexora/platform/plist/BinaryPlistReader.h"
#include "fexora/platform/plist/XmlPlistReader.h"

namespace fexora {

PlistResult readPropertyList(std::string_view bytes) {
  if (bytes.empty()) return {{}, "the file is empty"};
  if (bytes.starts_with("bplist")) return readBinaryPlist(bytes);
  return readXmlPlist(bytes);
}

}  // namespace fexora
