#include "programs/search/Service.h"

#include <algorithm>
#include <exception>
#include <memory>

#include "programs/shared/Words.h"

namespace fexora::search {
namespace {

using program::joined;

constexpr const char* kIcon = "org.fexora.Fexora";
// Of KRunner's kinds of matches the one that stands above all others: Plasma::QueryMatch.
constexpr int kExactMatch = 100;

constexpr const char* kInterfaces = R"xml(
<node>
  <interface name="org.gnome.Shell.SearchProvider2">
    <method name="GetInitialResultSet">
      <arg type="as" direction="in"/><arg type="as" direction="out"/>
    </method>
    <method name="GetSubsearchResultSet">
      <arg type="as" direction="in"/><arg type="as" direction="in"/>
      <arg type="as" direction="out"/>
    </method>
    <method name="GetResultMetas">
      <arg type="as" direction="in"/><arg type="aa{sv}" direction="out"/>
    </method>
    <method name="ActivateResult">
      <arg type="s" direction="in"/><arg type="as" direction="in"/><arg type="u" direction="in"/>
    </method>
    <method name="LaunchSearch">
      <arg type="as" direction="in"/><arg type="u" direction="in"/>
    </method>
  </interface>
  <interface name="org.kde.krunner1">
    <method name="Actions"><arg type="a(sss)" direction="out"/></method>
    <method name="Match">
      <arg type="s" direction="in"/><arg type="a(sssida{sv})" direction="out"/>
    </method>
    <method name="Run"><arg type="s" direction="in"/><arg type="s" direction="in"/></method>
  </interface>
</node>)xml";

std::vector<std::string> texts(GVariant* parameters, gsize index) {
  const std::unique_ptr<GVariant, decltype(&g_variant_unref)> list(
      g_variant_get_child_value(parameters, index), g_variant_unref);
  std::vector<std::string> found;
  for (gsize i = 0; i < g_variant_n_children(list.get()); ++i) {
    const char* text = nullptr;
    g_variant_get_child(list.get(), i, "&s", &text);
    found.emplace_back(text);
  }
  return found;
}

std::string text(GVariant* parameters, gsize index) {
  const char* found = nullptr;
  g_variant_get_child(parameters, index, "&s", &found);
  return found;
}

// An identifier holds no blanks but those between its words.
std::vector<std::string> wordsOf(const std::string& id) {
  std::vector<std::string> words;
  for (std::size_t at = 0; at <= id.size();) {
    const auto end = std::min(id.find(' ', at), id.size());
    words.push_back(id.substr(at, end - at));
    at = end + 1;
  }
  return words;
}

void add(GVariantBuilder& properties, const char* name, const std::string& value) {
  g_variant_builder_add(&properties, "{sv}", name, g_variant_new_string(value.c_str()));
}

}  // namespace

bool Service::exportOn(GDBusConnection* connection) {
  static GDBusNodeInfo* const node = g_dbus_node_info_new_for_xml(kInterfaces, nullptr);
  static const GDBusInterfaceVTable calls = {&Service::onCall, nullptr, nullptr, {}};
  for (GDBusInterfaceInfo** interface = node->interfaces; *interface != nullptr; ++interface) {
    if (g_dbus_connection_register_object(connection, kObjectPath, *interface, &calls, this,
                                          nullptr, nullptr) == 0) {
      return false;
    }
  }
  return true;
}

void Service::onCall(GDBusConnection* /*connection*/, const char* /*sender*/, const char* /*path*/,
                     const char* /*interface*/, const char* method, GVariant* parameters,
                     GDBusMethodInvocation* invocation, gpointer self) {
  const auto& service = *static_cast<const Service*>(self);
  try {
    g_dbus_method_invocation_return_value(invocation, service.reply(method, parameters));
  } catch (const std::exception& error) {
    g_dbus_method_invocation_return_error_literal(invocation, G_DBUS_ERROR, G_DBUS_ERROR_FAILED,
                                                  error.what());
  }
  service.host_.asked();
}

GVariant* Service::reply(const std::string& method, GVariant* parameters) const {
  if (method == "GetInitialResultSet") return resultSet(joined(texts(parameters, 0)));
  if (method == "GetSubsearchResultSet") return resultSet(joined(texts(parameters, 1)));
  if (method == "GetResultMetas") return metas(parameters);
  if (method == "Match") return matches(text(parameters, 0));
  if (method == "Actions") return g_variant_new("(a(sss))", nullptr);
  if (method == "LaunchSearch") {
    launchSearch(joined(texts(parameters, 0)));
  } else {  // ActivateResult and Run
    host_.open(wordsOf(text(parameters, 0)));
  }
  return nullptr;
}

GVariant* Service::resultSet(const std::string& query) const {
  GVariantBuilder ids;
  g_variant_builder_init(&ids, G_VARIANT_TYPE("as"));
  for (const Answer& answer : host_.answers(query)) {
    g_variant_builder_add(&ids, "s", answer.id.c_str());
  }
  return g_variant_new("(as)", &ids);
}

GVariant* Service::metas(GVariant* parameters) const {
  GVariantBuilder list;
  g_variant_builder_init(&list, G_VARIANT_TYPE("aa{sv}"));
  for (const std::string& id : texts(parameters, 0)) {
    for (const Answer& answer : host_.answers(id)) {
      GVariantBuilder properties;
      g_variant_builder_init(&properties, G_VARIANT_TYPE("a{sv}"));
      add(properties, "id", id);
      add(properties, "name", answer.title);
      add(properties, "description", answer.text);
      add(properties, "gicon", kIcon);
      add(properties, "clipboardText", answer.number);
      g_variant_builder_add(&list, "a{sv}", &properties);
    }
  }
  return g_variant_new("(aa{sv})", &list);
}

GVariant* Service::matches(const std::string& query) const {
  GVariantBuilder list;
  g_variant_builder_init(&list, G_VARIANT_TYPE("a(sssida{sv})"));
  double relevance = 1.0;
  constexpr double kStep = 0.01;  // keeps the order
  for (const Answer& answer : host_.answers(query)) {
    GVariantBuilder properties;
    g_variant_builder_init(&properties, G_VARIANT_TYPE("a{sv}"));
    add(properties, "subtext", answer.text);
    g_variant_builder_add(&list, "(sssida{sv})", answer.id.c_str(), answer.title.c_str(), kIcon,
                          kExactMatch, relevance, &properties);
    relevance -= kStep;
  }
  return g_variant_new("(a(sssida{sv}))", &list);
}

void Service::launchSearch(const std::string& query) const {
  const auto answers = host_.answers(query);
  host_.open(answers.empty() ? std::vector<std::string>() : wordsOf(answers.front().id));
}

}  // namespace fexora::search
