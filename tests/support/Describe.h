// A value as one line of text that differs whenever two values differ in any bit or kind, for
// comparing values with each other and with what tests/support/plist_tool.py prints.
#pragma once

#include <string>

#include <gtest/gtest.h>

#include "fexora/platform/values/Value.h"

namespace fexora::test {

// n (null), b0 b1, i<decimal>, r<bits>, t<bits of the seconds>, s<hex>, x<hex>, a[...],
// d{<hex>:...}. Every not-a-number is "rnan".
std::string describe(const Value& value);

// Whether two descriptions are equal; the message shows where they part, not all of them.
testing::AssertionResult sameDescription(const std::string& actual, const std::string& expected);

}  // namespace fexora::test
