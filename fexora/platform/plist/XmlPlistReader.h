// Reads the XML form of property lists: what the writer made by the fast way of
// LaidOutPlistReader, all else by the xml module, where expat finds the elements and PlistBuilder
// makes the values. Without the module all else is rejected, with the reason.
#pragma once

#include <string_view>

#include "fexora/platform/plist/PropertyListReader.h"

namespace fexora {

// As readPropertyList, for bytes that are meant to be XML. May throw std::bad_alloc.
PlistResult readXmlPlist(std::string_view bytes);

// What the xml module offers: the same for any XML.
struct XmlPlistModule {
  PlistResult (*read)(std::string_view bytes);
};

}  // namespace fexora
