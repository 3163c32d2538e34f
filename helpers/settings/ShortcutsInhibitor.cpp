#include "helpers/settings/ShortcutsInhibitor.hpp"

#include <wayland-client.h>

#include <QGuiApplication>
#include <QWindow>
#include <memory>
#include <string_view>

#include "Vantrel/Backends/Wayland/WaylandHandles.hpp"
#include "keyboard-shortcuts-inhibit-unstable-v1.h"

#if QT_VERSION < QT_VERSION_CHECK(6, 10, 0)
#include <qpa/qplatformnativeinterface.h>
#endif

namespace vantrel::qt {

namespace {

/// Qt's own objects, which belong to it.
struct QtObjects {
    wl_display* display = nullptr;
    wl_seat* seat = nullptr;
    wl_surface* surface = nullptr;
};

QtObjects objectsOf(QWidget& window) {
    QtObjects objects;
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    if (const auto* const native = qGuiApp->nativeInterface<QNativeInterface::QWaylandApplication>()) {
        objects.display = native->display();
        objects.seat = native->seat();
    }
#else
    QPlatformNativeInterface& native = *QGuiApplication::platformNativeInterface();
    objects.display = static_cast<wl_display*>(native.nativeResourceForIntegration("wl_display"));
    objects.seat = static_cast<wl_seat*>(native.nativeResourceForIntegration("wl_seat"));
#endif
#if QT_VERSION < QT_VERSION_CHECK(6, 10, 0)
    objects.surface = static_cast<wl_surface*>(
        QGuiApplication::platformNativeInterface()->nativeResourceForWindow("surface", window.windowHandle()));
#else
    objects.surface = reinterpret_cast<wl_surface*>(window.windowHandle()->winId());
#endif
    return objects;
}

constexpr wl_registry_listener registryListener{
    .global =
        [](void* data, wl_registry* registry, std::uint32_t name, const char* interface, std::uint32_t /*version*/) {
            if (std::string_view(interface) == zwp_keyboard_shortcuts_inhibit_manager_v1_interface.name) {
                *static_cast<zwp_keyboard_shortcuts_inhibit_manager_v1**>(data) =
                    static_cast<zwp_keyboard_shortcuts_inhibit_manager_v1*>(
                        wl_registry_bind(registry, name, &zwp_keyboard_shortcuts_inhibit_manager_v1_interface, 1));
            }
        },
    .global_remove = [](void* /*data*/, wl_registry* /*registry*/, std::uint32_t /*name*/) {}};

struct QueueDestroyer {
    void operator()(wl_event_queue* queue) const { wl_event_queue_destroy(queue); }
};
struct WrapperDestroyer {
    void operator()(wl_display* wrapper) const { wl_proxy_wrapper_destroy(wrapper); }
};

/// On a queue of its own: on Qt's, asking would carry out Qt's events here.
zwp_keyboard_shortcuts_inhibit_manager_v1* findManager(wl_display* display) {
    const std::unique_ptr<wl_event_queue, QueueDestroyer> queue(wl_display_create_queue(display));
    zwp_keyboard_shortcuts_inhibit_manager_v1* manager = nullptr;
    {
        const std::unique_ptr<wl_display, WrapperDestroyer> wrapper(
            static_cast<wl_display*>(wl_proxy_create_wrapper(display)));
        wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(wrapper.get()), queue.get());
        const wayland::WaylandPointer<wl_registry> registry(wl_display_get_registry(wrapper.get()));
        wl_registry_add_listener(registry.get(), &registryListener, &manager);
        wl_display_roundtrip_queue(display, queue.get());
    }
    if (manager != nullptr) {
        wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(manager), nullptr);
    }
    return manager;
}

}  // namespace

ShortcutsInhibitor::ShortcutsInhibitor(QWidget& window) {
    const QtObjects objects = objectsOf(window);
    if (objects.display == nullptr || objects.seat == nullptr || objects.surface == nullptr) {
        return;
    }
    display_ = objects.display;
    manager_ = findManager(display_);
    if (manager_ != nullptr) {
        inhibitor_ =
            zwp_keyboard_shortcuts_inhibit_manager_v1_inhibit_shortcuts(manager_, objects.surface, objects.seat);
        wl_display_flush(display_);
    }
}

ShortcutsInhibitor::~ShortcutsInhibitor() {
    if (inhibitor_ != nullptr) {
        zwp_keyboard_shortcuts_inhibitor_v1_destroy(inhibitor_);
    }
    if (manager_ != nullptr) {
        zwp_keyboard_shortcuts_inhibit_manager_v1_destroy(manager_);
    }
    if (display_ != nullptr) {
        // Otherwise sent with Qt's next words, which may come late.
        wl_display_flush(display_);
    }
}

}  // namespace vantrel::qt
