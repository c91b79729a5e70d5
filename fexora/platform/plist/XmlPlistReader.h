// Reads the XML form of property lists: what the writer made by the fast way of
// LaidOutPlistReader, all else by the xml module, where expat finds the elements and PlistBuilder
// makes the values. Without the module all else is refused, with the reason.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "fexora/platform/plist/PropertyListReader.h"

namespace fexora {

// As readPropertyList, for bytes that are meant to be XML. May throw std::bad_alloc.
PlistResult readXmlPlist(std::string_view bytes);

// A key and its value as they stand in a root dictionary.
struct XmlPlistEntry {
  std::string key;
  Value value;
  std::size_t bytes = 0;    // from the beginning of what was read to the end of the value's element
  std::size_t objects = 0;  // values in it, each counted
};

// Reads one entry at the head of `bytes` exactly as the whole reader would inside the root
// dictionary of a UTF-8 file; what follows the entry is not looked at. Nothing when there is no
// whole entry. May throw std::bad_alloc.
std::optional<XmlPlistEntry> readXmlPlistEntry(std::string_view bytes);

// What the xml module offers: both of the above for any XML.
struct XmlPlistModule {
  PlistResult (*read)(std::string_view bytes);
  std::optional<XmlPlistEntry> (*readEntry)(std::string_view bytes);
};

}  // namespace fexora
