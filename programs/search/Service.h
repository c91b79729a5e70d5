// Both desktops' searches on the session bus, org.gnome.Shell.SearchProvider2 and org.kde.krunner1,
// as one object.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <gio/gio.h>

#include "programs/search/Answers.h"

namespace fexora::search {

inline constexpr const char* kBusName = "org.fexora.Search";
inline constexpr const char* kObjectPath = "/org/fexora/Search";

class Service {
 public:
  struct Host {
    std::function<std::vector<Answer>(const std::string& query)> answers;
    std::function<void(const std::vector<std::string>& words)> open;  // a result, or a search
    std::function<void()> asked;                                      // after every call
  };
  explicit Service(Host host) : host_(std::move(host)) {}

  // Stands at kObjectPath as long as the connection does; the main context must not run any more
  // once this object has gone. False when the path is taken.
  bool exportOn(GDBusConnection* connection);

 private:
  static void onCall(GDBusConnection* connection, const char* sender, const char* path,
                     const char* interface, const char* method, GVariant* parameters,
                     GDBusMethodInvocation* invocation, gpointer self);
  GVariant* reply(const std::string& method, GVariant* parameters) const;
  GVariant* resultSet(const std::string& query) const;
  GVariant* metas(GVariant* parameters) const;
  GVariant* matches(const std::string& query) const;
  void launchSearch(const std::string& query) const;

  Host host_;
};

}  // namespace fexora::search
