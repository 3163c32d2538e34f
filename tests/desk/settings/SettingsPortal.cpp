#include "tests/desk/settings/SettingsPortal.hpp"

#include <string_view>

namespace vantrel::desk {

namespace {

constexpr auto path = "/org/freedesktop/portal/desktop";
constexpr auto interface = "org.freedesktop.portal.Settings";
constexpr auto appearance = "org.freedesktop.appearance";
constexpr auto description = R"xml(<node>
  <interface name="org.freedesktop.portal.Settings">
    <method name="Read">
      <arg name="namespace" type="s" direction="in"/>
      <arg name="key" type="s" direction="in"/>
      <arg name="value" type="v" direction="out"/>
    </method>
    <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
  </interface>
</node>)xml";

}  // namespace

struct SettingsPortal::Callbacks {
    static void call(GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*, GVariant* arguments,
                     GDBusMethodInvocation* invocation, gpointer data) {
        auto& portal = *static_cast<SettingsPortal*>(data);
        ++portal.reads_;
        const gchar* space = nullptr;
        const gchar* key = nullptr;
        g_variant_get(arguments, "(&s&s)", &space, &key);
        if (std::string_view(space) != appearance || std::string_view(key) != "color-scheme") {
            g_dbus_method_invocation_return_dbus_error(invocation, "org.freedesktop.portal.Error.NotFound", "no such");
            return;
        }
        // In two variants, as the real one answers.
        g_dbus_method_invocation_return_value(
            invocation, g_variant_new("(v)", g_variant_new_variant(g_variant_new_uint32(portal.colorScheme_))));
    }

    static constexpr GDBusInterfaceVTable table{&call, nullptr, nullptr, {}};
};

SettingsPortal::SettingsPortal(const std::string& busAddress, std::uint32_t colorScheme)
    : bus_(busAddress), colorScheme_(colorScheme) {
    GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(description, nullptr);
    registration_ = g_dbus_connection_register_object(bus_.get(), path, node->interfaces[0], &Callbacks::table, this,
                                                      nullptr, nullptr);
    g_dbus_node_info_unref(node);
    bus_.ownName("org.freedesktop.portal.Desktop");
}

SettingsPortal::~SettingsPortal() {
    g_dbus_connection_unregister_object(bus_.get(), registration_);
}

void SettingsPortal::setColorScheme(std::uint32_t colorScheme) {
    colorScheme_ = colorScheme;
    g_dbus_connection_emit_signal(bus_.get(), nullptr, path, interface, "SettingChanged",
                                  g_variant_new("(ssv)", appearance, "color-scheme", g_variant_new_uint32(colorScheme)),
                                  nullptr);
}

}  // namespace vantrel::desk
