#include "Vantrel/Desktop/StatusItem/StatusNotifierItem.hpp"

#include <unistd.h>

#include <string_view>
#include <utility>

#include "Vantrel/Desktop/StatusItem/ItemIconLocation.hpp"
#include "Vantrel/Desktop/StatusItem/PanelLabel.hpp"
#include "Vantrel/Desktop/StatusItem/StatusNotifierInterface.hpp"
#include "Vantrel/Icon/ItemIcon.hpp"

namespace vantrel::desktop {

namespace {

constexpr auto itemPath = "/StatusNotifierItem";
constexpr auto itemInterface = "org.kde.StatusNotifierItem";
constexpr auto itemTitle = "Vantrel";

std::string itemBusName() {
    return "org.kde.StatusNotifierItem-" + std::to_string(getpid()) + "-1";
}

GVariant* noPixmaps() {
    return g_variant_new_array(G_VARIANT_TYPE("(iiay)"), nullptr, 0);
}

/// The drawing in the sizes that panels use, each pixel as four bytes: alpha, red, green, blue.
GVariant* iconPixmaps() {
    GVariantBuilder pixmaps;
    g_variant_builder_init(&pixmaps, G_VARIANT_TYPE("a(iiay)"));
    for (const ItemIcon& icon : itemIcons()) {
        std::vector<std::uint8_t> bytes;
        bytes.reserve(icon.pixels.size() * sizeof(std::uint32_t));
        for (const std::uint32_t pixel : icon.pixels) {
            for (const unsigned shift : {24U, 16U, 8U, 0U}) {
                bytes.push_back(static_cast<std::uint8_t>(pixel >> shift));
            }
        }
        g_variant_builder_add(&pixmaps, "(ii@ay)", icon.size, icon.size,
                              g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, bytes.data(), bytes.size(), 1));
    }
    return g_variant_builder_end(&pixmaps);
}

}  // namespace

/// The bus's C callbacks; `data` is the item.
struct StatusNotifierItem::BusCallbacks {
    static StatusNotifierItem& self(gpointer data) { return *static_cast<StatusNotifierItem*>(data); }

    static void call(GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar* method, GVariant*,
                     GDBusMethodInvocation* invocation, gpointer data) {
        const std::string_view name(method);
        if (name == "Activate" && self(data).opensRefusedMenu()) {
            g_dbus_method_invocation_return_error(invocation, G_DBUS_ERROR, G_DBUS_ERROR_NOT_SUPPORTED,
                                                  "The item is its menu");
            return;
        }
        const bool isMenuWanted = name == "ContextMenu" || name == "Activate";
        g_dbus_method_invocation_return_value(invocation, nullptr);
        if (isMenuWanted) {
            self(data).events_.menuWanted();
        }
    }

    static GVariant* get(GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar* name, GError** error,
                         gpointer data) {
        GVariant* value = self(data).property(name);
        if (value == nullptr) {
            g_set_error(error, G_DBUS_ERROR, G_DBUS_ERROR_UNKNOWN_PROPERTY, "No property %s", name);
        }
        return value;
    }

    static void nameRequested(GObject* bus, GAsyncResult* result, gpointer data) {
        GError* rawError = nullptr;
        const GVariantPointer reply(g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, &rawError));
        const GErrorPointer error(rawError);
        const bool isItemGone = error && g_error_matches(error.get(), G_IO_ERROR, G_IO_ERROR_CANCELLED) != FALSE;
        if (isItemGone || g_dbus_connection_is_closed(G_DBUS_CONNECTION(bus)) != FALSE) {
            return;
        }
        constexpr guint32 isPrimaryOwner = 1;
        guint32 outcome = 0;
        if (reply) {
            g_variant_get(reply.get(), "(u)", &outcome);
        }
        // A sandbox's bus may refuse the name; watchers take the object's path as well.
        self(data).registerAs(outcome == isPrimaryOwner ? itemBusName() : itemPath);
    }

    static constexpr GDBusInterfaceVTable table{&call, &get, nullptr, {}};
};

StatusNotifierItem::StatusNotifierItem(GDBusConnection* bus, std::string menuPath, Texts texts, Events events)
    : bus_(shareObject(bus)),
      menuPath_(std::move(menuPath)),
      texts_(std::move(texts)),
      events_(std::move(events)),
      cancellable_(g_cancellable_new()) {
    texts_.label = panelLabel(texts_.label);
    GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(statusNotifierInterface, nullptr);
    objectRegistration_ = g_dbus_connection_register_object(bus, itemPath, node->interfaces[0], &BusCallbacks::table,
                                                            this, nullptr, nullptr);
    g_dbus_node_info_unref(node);
    requestName();
}

StatusNotifierItem::~StatusNotifierItem() {
    registration_.reset();
    g_cancellable_cancel(cancellable_.get());
    if (objectRegistration_ != 0) {
        g_dbus_connection_unregister_object(bus_.get(), objectRegistration_);
    }
}

void StatusNotifierItem::requestName() {
    // Not by g_bus_own_name(): that gives the name back with a call that waits for the answer, and a bus that hangs
    // would hold up the end of the session. The name goes with the connection.
    constexpr guint32 doNotQueue = 4;  // of RequestName's flags
    g_dbus_connection_call(bus_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                           "RequestName", g_variant_new("(su)", itemBusName().c_str(), doNotQueue),
                           G_VARIANT_TYPE("(u)"), G_DBUS_CALL_FLAGS_NONE, -1, cancellable_.get(),
                           &BusCallbacks::nameRequested, this);
}

void StatusNotifierItem::registerAs(const std::string& service) {
    registration_ = std::make_unique<WatcherRegistration>(bus_.get(), service, [this] {
        if (registration_->missesFirstLabel()) {
            announcing_ = LoopSource::after(std::chrono::seconds(1), [this] {
                announceLabel("");
                announceLabel(texts_.label);
            });
        }
        events_.presenceChanged();
    });
}

void StatusNotifierItem::setLabel(const std::string& label) {
    texts_.label = panelLabel(label);
    announceLabel(texts_.label);
}

void StatusNotifierItem::announceLabel(const std::string& label) {
    emitSignal("XAyatanaNewLabel", g_variant_new("(ss)", label.c_str(), label.c_str()));
}

void StatusNotifierItem::setToolTip(const std::string& toolTip) {
    texts_.toolTip = toolTip;
    emitSignal("NewToolTip", nullptr);
}

void StatusNotifierItem::emitSignal(const char* name, GVariant* arguments) {
    g_dbus_connection_emit_signal(bus_.get(), nullptr, itemPath, itemInterface, name, arguments, nullptr);
}

GVariant* StatusNotifierItem::property(const std::string& name) const {
    const std::pair<std::string_view, std::string_view> strings[] = {
        {"Category", "ApplicationStatus"},
        {"Id", "vantrel"},
        {"Title", itemTitle},
        {"Status", "Active"},
        {"IconAccessibleDesc", itemTitle},
        {"OverlayIconName", ""},
        {"AttentionIconName", ""},
        {"AttentionMovieName", ""},
        {"AttentionAccessibleDesc", ""},
        {"XAyatanaLabel", texts_.label},
        // The guide is the longest text to make room for: the item fits itself to the text of the moment.
        {"XAyatanaLabelGuide", texts_.label},
    };
    for (const auto& [key, value] : strings) {
        if (key == name) {
            return g_variant_new_string(std::string(value).c_str());
        }
    }
    if (name == "IconName") {
        return g_variant_new_string(itemIconLocation().name.c_str());
    }
    if (name == "IconThemePath") {
        return g_variant_new_string(itemIconLocation().themePath.c_str());
    }
    if (name == "IconPixmap") {
        return iconPixmaps();
    }
    if (name == "OverlayIconPixmap" || name == "AttentionIconPixmap") {
        return noPixmaps();
    }
    if (name == "ToolTip") {
        return g_variant_new("(s@a(iiay)ss)", "", noPixmaps(), texts_.toolTip.c_str(), "");
    }
    if (name == "ItemIsMenu") {
        return g_variant_new_boolean(TRUE);
    }
    if (name == "Menu") {
        return g_variant_new_object_path(menuPath_.c_str());
    }
    if (name == "WindowId") {
        return g_variant_new_int32(0);
    }
    return name == "XAyatanaOrderingIndex" ? g_variant_new_uint32(0) : nullptr;
}

}  // namespace vantrel::desktop
