// Reads the binary form of property lists, version "bplist00".
//
// Layout: "bplist00", the objects, a table of their offsets, and a trailer of 32 bytes: 6 unused,
// 1 size of an offset, 1 size of an object's number, 8 count of objects, 8 number of the root, 8
// offset of the table; big-endian. An object begins with its kind in the high four bits and a size
// in the low ones.
#pragma once

#include <string_view>

#include "fexora/platform/plist/PropertyListReader.h"

namespace fexora {

// As readPropertyList, for bytes that begin as a binary property list. Nothing is allocated on the
// word of a size in the file. May throw std::bad_alloc.
PlistResult readBinaryPlist(std::string_view bytes);

}  // namespace fexora
