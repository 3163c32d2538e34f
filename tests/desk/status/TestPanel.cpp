#include "tests/desk/status/TestPanel.hpp"

#include <stdexcept>
#include <string_view>

namespace vantrel::desk {

namespace {

constexpr auto watcherName = "org.kde.StatusNotifierWatcher";
constexpr auto watcherPath = "/StatusNotifierWatcher";
constexpr auto watcherInterface = R"xml(<node>
  <interface name="org.kde.StatusNotifierWatcher">
    <method name="RegisterStatusNotifierItem"><arg name="service" type="s" direction="in"/></method>
    <method name="RegisterStatusNotifierHost"><arg name="service" type="s" direction="in"/></method>
    <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
    <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
    <property name="ProtocolVersion" type="i" access="read"/>
    <signal name="StatusNotifierItemRegistered"><arg type="s"/></signal>
    <signal name="StatusNotifierItemUnregistered"><arg type="s"/></signal>
    <signal name="StatusNotifierHostRegistered"/>
    <signal name="StatusNotifierHostUnregistered"/>
  </interface>
</node>)xml";

}  // namespace

struct TestPanel::Callbacks {
    static void call(GDBusConnection*, const gchar* sender, const gchar*, const gchar*, const gchar* method,
                     GVariant* arguments, GDBusMethodInvocation* invocation, gpointer data) {
        auto& panel = *static_cast<TestPanel*>(data);
        if (std::string_view(method) == "RegisterStatusNotifierItem") {
            if (panel.refusals_ > 0) {
                --panel.refusals_;
                g_dbus_method_invocation_return_dbus_error(invocation, "org.vantrel.Test.Refused", "not now");
                return;
            }
            const gchar* service = nullptr;
            g_variant_get(arguments, "(&s)", &service);
            // As the StatusNotifierItem protocol has it: a bus name, or the path of an object of the caller.
            panel.items_.emplace_back(*service == '/' ? sender : service);
        }
        g_dbus_method_invocation_return_value(invocation, nullptr);
    }

    static GVariant* get(GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar* name, GError**,
                         gpointer data) {
        const auto& panel = *static_cast<TestPanel*>(data);
        const std::string_view property(name);
        if (property == "IsStatusNotifierHostRegistered") {
            return g_variant_new_boolean(panel.hasHost_ ? TRUE : FALSE);
        }
        return property == "ProtocolVersion" ? g_variant_new_int32(0)
                                             : g_variant_new_array(G_VARIANT_TYPE_STRING, nullptr, 0);
    }

    static constexpr GDBusInterfaceVTable table{&call, &get, nullptr, {}};
};

TestPanel::TestPanel(const std::string& address, Options options)
    : bus_(address), hasHost_(options.hasHost), refusals_(options.refusals) {
    GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(watcherInterface, nullptr);
    registration_ = g_dbus_connection_register_object(bus_.get(), watcherPath, node->interfaces[0], &Callbacks::table,
                                                      this, nullptr, nullptr);
    g_dbus_node_info_unref(node);
    bus_.ownName(watcherName);
}

TestPanel::~TestPanel() {
    g_dbus_connection_unregister_object(bus_.get(), registration_);
}

bool TestPanel::waitForRegistrations(std::size_t count) {
    return waitOnBus([&] { return items_.size() >= count; });
}

void TestPanel::setHost(bool hasHost) {
    hasHost_ = hasHost;
    g_dbus_connection_emit_signal(bus_.get(), nullptr, watcherPath, watcherName,
                                  hasHost ? "StatusNotifierHostRegistered" : "StatusNotifierHostUnregistered", nullptr,
                                  nullptr);
}

}  // namespace vantrel::desk
