// The store's members by name.
#include "fexora/store/UserStoreManager.h"

namespace fexora {

std::optional<Value> UserStoreManager::valueForKey(std::string_view name) const {
  return guardedOr(*platform_.log, "Reading a member by name", std::optional<Value>(),
                   [&] { return member(name); });
}

std::optional<Value> UserStoreManager::member(std::string_view name) const {
  // The two paths are found at their first reading, which changes nothing that a caller sees.
  auto& self =
      const_cast<UserStoreManager&>(*this);  // NOLINT(cppcoreguidelines-pro-type-const-cast)
  if (name == "ud") return Value(ud());
  if (name == "storeName") return Value(storeName());
  if (name == "skipUpdate") return Value(skipUpdate());
  if (name == "applicationDocumentsDirectory") return Value(self.applicationDocumentsDirectory());
  if (name == "fileURL") return Value(self.fileURL());
  return NSObject::valueForKey(name);
}

bool UserStoreManager::setValueForKey(std::string_view name, const Value& value) {
  return guardedOr(*platform_.log, "Setting a member by name", false,
                   [&] { return setMember(name, value); });
}

bool UserStoreManager::setMember(std::string_view name, const Value& value) {
  if (name == "ud" && value.dictionary() != nullptr) {
    setUd(*value.dictionary());
  } else if (name == "skipUpdate" && value.number() != nullptr) {
    setSkipUpdate(value.number()->boolValue());
  } else if (name == "applicationDocumentsDirectory" && value.string() != nullptr) {
    setApplicationDocumentsDirectory(*value.string());
  } else if (name == "fileURL" && value.string() != nullptr) {
    setFileURL(*value.string());
  } else {
    return NSObject::setValueForKey(name, value);
  }
  return true;
}

std::optional<Value> UserStoreManager::perform(std::string_view selector, const Array& arguments) {
  struct Operation {
    std::string_view selector;
    void (*run)(UserStoreManager&);
  };
  static constexpr Operation kOperations[] = {
      {"loadData", [](UserStoreManager& store) { store.loadData(); }},
      {"folderUpdate", [](UserStoreManager& store) { store.folderUpdate(); }},
      {"synchronize", [](UserStoreManager& store) { store.synchronize(); }},
      {"startSyncTimer", [](UserStoreManager& store) { store.startSyncTimer(); }},
      {"syncFromTimer:", [](UserStoreManager& store) { store.syncFromTimer(nullptr); }},
      {"startDisableSkipUpdateTimer",
       [](UserStoreManager& store) { store.startDisableSkipUpdateTimer(); }},
      {"disableSkipFileUpdate:",
       [](UserStoreManager& store) { store.disableSkipFileUpdate(nullptr); }},
  };
  for (const Operation& operation : kOperations) {
    if (operation.selector != selector) continue;
    if (arguments.size() != (selector.ends_with(':') ? 1U : 0U)) return std::nullopt;
    operation.run(*this);
    return Value();
  }
  return NSObject::perform(selector, arguments);
}

}  // namespace fexora
