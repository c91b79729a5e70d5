#include "fexora/platform/plist/PropertyListWriter.h"

#include <new>

#include "fexora/platform/base/Guarded.h"
#include "fexora/platform/plist/XmlPlistWriter.h"

namespace fexora {

PlistBytes writePropertyList(const Value& root) {
  try {
    PlistBytes result;
    result.bytes = kXmlPlistHead;
    XmlPlistWriter writer(result.bytes);
    if (!writer.appendRoot(root)) return {{}, writer.error()};
    result.bytes += kXmlPlistTail;
    if (!writer.isReadable()) return {{}, writer.error()};
    return result;
  } catch (const std::bad_alloc&) {
    return {{}, kOutOfMemory, PlistFault::memory};
  }
}

}  // namespace fexora
