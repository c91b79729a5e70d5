// A store on a real file in a container of its own, with a desktop in the test's hand.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "fexora/platform/plist/PropertyListReader.h"
#include "fexora/platform/plist/PropertyListWriter.h"
#include "fexora/store/StoreManager.h"

#include "tests/support/VirtualPlatform.h"

namespace fexora::test {

// What a store's file holds; fails the test when that is no dictionary.
inline Dictionary contentOf(const std::string& file) {
  const auto read = readPropertyList(readFile(file));
  EXPECT_NE(read.value.dictionary(), nullptr) << read.error;
  return read.value.dictionary() != nullptr ? *read.value.dictionary() : Dictionary();
}

// The integer under "Fraction"; 0 when there is none.
inline std::int64_t fractionOf(const Dictionary& content) {
  const Value* value = content.find("Fraction");
  return value != nullptr ? value->number()->intValue() : 0;
}

struct StoreWorld {
  explicit StoreWorld(Files& files = Files::process()) : desktop(files) {}

  // Makes the store, with the skip period of a first save over.
  StoreManager& start(CurrencyManager* catalogue = nullptr) {
    store = std::make_unique<StoreManager>(desktop.platform, catalogue);
    desktop.loop.advance(2.0);
    return *store;
  }
  // As another process would.
  void write(const Dictionary& content) const {
    writeFile(container.file(), writePropertyList(content).bytes);
  }
  Dictionary content() const { return contentOf(container.file()); }
  std::int64_t fraction() const { return fractionOf(content()); }

  // The names in the container that begin with `prefix`.
  std::vector<std::string> names(const std::string& prefix = "") const {
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(container.path())) {
      const std::string name = entry.path().filename();
      if (name.starts_with(prefix)) found.push_back(name);
    }
    return found;
  }
  // What was kept aside.
  std::vector<std::string> asides() const {
    const std::filesystem::path folder = container.path();
    auto found = names(".fexora-unreadable-");
    for (std::string& name : found) name = readFile(folder / name);
    return found;
  }

  TestContainer container;
  VirtualPlatform desktop;
  int updates = 0;
  const NotificationCenter::Token token =
      desktop.notifications.addObserver(fileWatcherUpdate, [this] { ++updates; });
  std::unique_ptr<StoreManager> store;
};

}  // namespace fexora::test
