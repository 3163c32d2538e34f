#include "Vantrel/Backends/Plasma/PlasmaHotKeyBinder.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <string_view>
#include <thread>

#include "tests/desk/support/SessionBus.hpp"
#include "tests/desk/support/Wait.hpp"
#include "tests/unit/wayland/ScriptedCompositor.hpp"

namespace vantrel::plasma {
namespace {

GObjectPointer<GDBusConnection> connectionTo(const std::string& bus) {
    constexpr auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                             G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    return GObjectPointer<GDBusConnection>(
        g_dbus_connection_new_for_address_sync(bus.c_str(), flags, nullptr, nullptr, nullptr));
}

/// KGlobalAccel as far as it is asked, with every key free. On a thread of its own, because its client waits for it.
class FakeGlobalAccel {
  public:
    explicit FakeGlobalAccel(const std::string& bus) : thread_([this, bus] { serve(bus); }) {
        isUp_.get_future().wait();
    }
    ~FakeGlobalAccel() {
        isEnding_ = true;
        g_main_context_wakeup(context_.get());
        thread_.join();
    }
    FakeGlobalAccel(const FakeGlobalAccel&) = delete;
    FakeGlobalAccel& operator=(const FakeGlobalAccel&) = delete;

    [[nodiscard]] bool hasKeys() const { return hasKeys_; }

  private:
    void serve(const std::string& busAddress) {
        g_main_context_push_thread_default(context_.get());
        const auto bus = connectionTo(busAddress);
        GDBusNodeInfo* const node = g_dbus_node_info_new_for_xml(
            "<node><interface name='org.kde.KGlobalAccel'>"
            "<method name='isGlobalShortcutAvailable'>"
            "<arg type='i' direction='in'/><arg type='s' direction='in'/><arg type='b' direction='out'/></method>"
            "<method name='doRegister'><arg type='as' direction='in'/></method>"
            "<method name='setShortcutKeys'><arg type='as' direction='in'/><arg type='a(ai)' direction='in'/>"
            "<arg type='u' direction='in'/><arg type='a(ai)' direction='out'/></method>"
            "<method name='unregister'>"
            "<arg type='s' direction='in'/><arg type='s' direction='in'/><arg type='b' direction='out'/></method>"
            "</interface></node>",
            nullptr);
        static constexpr GDBusInterfaceVTable table{&called, nullptr, nullptr, {}};
        g_dbus_connection_register_object(bus.get(), "/kglobalaccel", node->interfaces[0], &table, this, nullptr,
                                          nullptr);
        g_dbus_node_info_unref(node);
        static_cast<void>(
            backend::callUntil(Clock::now() + desk::generousDeadline, bus.get(),
                               {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName"},
                               g_variant_new("(su)", "org.kde.kglobalaccel", 0U), "(u)"));
        isUp_.set_value();
        while (!isEnding_) {
            g_main_context_iteration(context_.get(), TRUE);
        }
        g_main_context_pop_thread_default(context_.get());
    }

    static void called(GDBusConnection* /*bus*/, const char* /*sender*/, const char* /*path*/,
                       const char* /*interface*/, const char* method, GVariant* arguments,
                       GDBusMethodInvocation* invocation, gpointer data) {
        const std::string_view name(method);
        auto& hasKeys = static_cast<FakeGlobalAccel*>(data)->hasKeys_;
        if (name == "setShortcutKeys") {
            hasKeys = true;
            const GVariantPointer keys(g_variant_get_child_value(arguments, 1));
            g_dbus_method_invocation_return_value(invocation, g_variant_new("(@a(ai))", keys.get()));
            return;
        }
        if (name == "unregister") {
            hasKeys = false;
        }
        g_dbus_method_invocation_return_value(invocation, name == "doRegister" ? nullptr : g_variant_new("(b)", TRUE));
    }

    GMainContextPointer context_{g_main_context_new()};
    std::promise<void> isUp_;
    std::atomic<bool> isEnding_ = false;
    std::atomic<bool> hasKeys_ = false;
    std::thread thread_;
};

wayland::KeymapPointer usualKeymap(Clock::time_point /*deadline*/) {
    const std::unique_ptr<xkb_context, decltype(&xkb_context_unref)> context(xkb_context_new(XKB_CONTEXT_NO_FLAGS),
                                                                             &xkb_context_unref);
    return wayland::KeymapPointer(xkb_keymap_new_from_names(context.get(), nullptr, XKB_KEYMAP_COMPILE_NO_FLAGS));
}

TEST(PlasmaHotKeyBinder, setRecording_noAnswerAtItsEnd_keysAreBoundWhenThereIsOne) {
    desk::SessionBus bus;
    const FakeGlobalAccel service(bus.address());
    const wayland::ScriptedCompositor compositor;
    std::string error;
    const auto connection = wayland::WaylandConnection::open(error);
    ASSERT_TRUE(connection) << error;
    const wayland::Registry registry(*connection);
    compositor.offer(1, wl_seat_interface.name, wayland::Seat::version);
    connection->drain();
    PlasmaHotKeyBinder binder(connectionTo(bus.address()), registry, usualKeymap);
    ASSERT_EQ(binder.bind({.keyCode = 2, .modifiers = combinationModifiers}), 0);
    ASSERT_TRUE(service.hasKeys());

    binder.setRecording(true);
    EXPECT_TRUE(desk::waitUntil([&] { return !service.hasKeys(); }));
    bus.freeze();
    binder.setRecording(false);
    bus.thaw();

    EXPECT_TRUE(desk::waitUntil([&] {
        g_main_context_iteration(nullptr, FALSE);
        return service.hasKeys();
    }));
}

}  // namespace
}  // namespace vantrel::plasma
