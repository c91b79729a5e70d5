// A catalogue of a test's own codes, on a virtual platform of its own.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "fexora/catalogue/CurrencyManager.h"
#include "fexora/platform/plist/PropertyListWriter.h"

#include "tests/support/VirtualPlatform.h"

namespace fexora::test {

class TestCatalogue {
 public:
  explicit TestCatalogue(const std::vector<std::string>& codes) {
    const auto plist = writePropertyList(Array(codes.begin(), codes.end()));
    EXPECT_TRUE(plist.ok()) << plist.error;
    writeFile(folder_ / "Currency.plist", plist.bytes);
    desktop.resources.folder = folder_.path();
  }

  // Made at the first call, from what `desktop` holds then.
  CurrencyManager& manager() {
    if (manager_ == nullptr) manager_ = std::make_unique<CurrencyManager>(desktop.platform);
    return *manager_;
  }

  VirtualPlatform desktop;

 private:
  ScratchFolder folder_;
  std::unique_ptr<CurrencyManager> manager_;
};

}  // namespace fexora::test
