#include "programs/search/Converter.h"

namespace fexora::search {

void openConverter(GDBusConnection* bus, const std::vector<std::string>& words) {
  // As the converter's desktop entry has it: DBusActivatable.
  GVariantBuilder list;
  g_variant_builder_init(&list, G_VARIANT_TYPE("av"));
  for (const std::string& word : words) {
    g_variant_builder_add(&list, "v", g_variant_new_string(word.c_str()));
  }
  g_dbus_connection_call(bus, "org.fexora.Fexora", "/org/fexora/Fexora",
                         "org.freedesktop.Application", "ActivateAction",
                         g_variant_new("(sava{sv})", "convert", &list, nullptr), nullptr,
                         G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr, nullptr);
}

}  // namespace fexora::search
