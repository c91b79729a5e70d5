#include "fexora/platform/plist/PropertyListWriter.h"

#include "fexora/platform/plist/XmlPlistWriter.h"

namespace fexora {

PlistBytes writePropertyList(const Value& root) {
  PlistBytes result;
  result.bytes = kXmlPlistHead;
  XmlPlistWriter writer(result.bytes);
  if (!writer.appendRoot(root)) return {{}, writer.error()};
  result.bytes += kXmlPlistTail;
  if (!writer.isReadable()) return {{}, writer.error()};
  return result;
}

}  // namespace fexora
