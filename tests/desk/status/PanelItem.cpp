#include "tests/desk/status/PanelItem.hpp"

#include <algorithm>
#include <utility>

namespace vantrel::desk {

namespace {

constexpr auto itemPath = "/StatusNotifierItem";
constexpr auto itemInterface = "org.kde.StatusNotifierItem";
constexpr auto menuInterface = "com.canonical.dbusmenu";

std::string shortcutText(GVariant* properties) {
    const GVariantPointer shortcut(g_variant_lookup_value(properties, "shortcut", G_VARIANT_TYPE("aas")));
    std::string text;
    if (shortcut && g_variant_n_children(shortcut.get()) > 0) {
        const GVariantPointer keys(g_variant_get_child_value(shortcut.get(), 0));
        for (gsize index = 0; index < g_variant_n_children(keys.get()); ++index) {
            const GVariantPointer key(g_variant_get_child_value(keys.get(), index));
            if (index > 0) {
                text += '+';
            }
            text += textOf(key);
        }
    }
    return text;
}

PanelRow rowOf(GVariant* node) {
    PanelRow row;
    GVariant* rawProperties = nullptr;
    g_variant_get(node, "(i@a{sv}av)", &row.identifier, &rawProperties, nullptr);
    const GVariantPointer properties(rawProperties);
    const gchar* label = nullptr;
    if (g_variant_lookup(properties.get(), "label", "&s", &label)) {
        row.label = label;
    }
    gboolean isEnabled = TRUE;
    g_variant_lookup(properties.get(), "enabled", "b", &isEnabled);
    row.isEnabled = isEnabled != FALSE;
    const gchar* type = nullptr;
    row.isSeparator =
        g_variant_lookup(properties.get(), "type", "&s", &type) != FALSE && std::string(type) == "separator";
    row.shortcut = shortcutText(properties.get());
    return row;
}

}  // namespace

PanelItem::PanelItem(BusClient& bus, std::string busName) : bus_(bus), busName_(std::move(busName)) {
    const auto labelled = [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*,
                             GVariant* arguments, gpointer data) {
        const gchar* label = nullptr;
        g_variant_get(arguments, "(&s&s)", &label, nullptr);
        static_cast<PanelItem*>(data)->labels_.emplace_back(label);
    };
    subscription_ =
        g_dbus_connection_signal_subscribe(bus_.get(), busName_.c_str(), itemInterface, "XAyatanaNewLabel", itemPath,
                                           nullptr, G_DBUS_SIGNAL_FLAGS_NONE, labelled, this, nullptr);
    const auto menuChanged = [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar* signal,
                                GVariant*, gpointer data) {
        auto& item = *static_cast<PanelItem*>(data);
        ++(std::string(signal) == "LayoutUpdated" ? item.layoutChanges_ : item.propertyChanges_);
    };
    menuSubscription_ =
        g_dbus_connection_signal_subscribe(bus_.get(), busName_.c_str(), menuInterface, nullptr, nullptr, nullptr,
                                           G_DBUS_SIGNAL_FLAGS_NONE, menuChanged, this, nullptr);
    // The bus has the subscriptions before it has the answer to this.
    property("Id");
}

PanelItem::~PanelItem() {
    g_dbus_connection_signal_unsubscribe(bus_.get(), subscription_);
    g_dbus_connection_signal_unsubscribe(bus_.get(), menuSubscription_);
}

GVariantPointer PanelItem::property(const std::string& name) {
    return bus_.property(busName_, itemPath, itemInterface, name);
}

bool PanelItem::waitForLabel(const std::string& label) {
    return waitOnBus([&] {
        const auto found = std::find(labels_.begin() + static_cast<std::ptrdiff_t>(awaited_), labels_.end(), label);
        if (found == labels_.end()) {
            return false;
        }
        awaited_ = static_cast<std::size_t>(found - labels_.begin()) + 1;
        return true;
    });
}

std::vector<PanelRow> PanelItem::rows() {
    const GVariantPointer answer =
        bus_.call(busName_, text("Menu"), menuInterface, "GetLayout", g_variant_new("(iias)", 0, -1, nullptr));
    std::vector<PanelRow> rows;
    if (!answer) {
        return rows;
    }
    const GVariantPointer root(g_variant_get_child_value(answer.get(), 1));
    const GVariantPointer children(g_variant_get_child_value(root.get(), 2));
    for (gsize index = 0; index < g_variant_n_children(children.get()); ++index) {
        const GVariantPointer boxed(g_variant_get_child_value(children.get(), index));
        const GVariantPointer node(g_variant_get_variant(boxed.get()));
        rows.push_back(rowOf(node.get()));
    }
    return rows;
}

bool PanelItem::click(int identifier) {
    return bus_.call(busName_, text("Menu"), menuInterface, "Event",
                     g_variant_new("(isvu)", identifier, "clicked", g_variant_new_int32(0), 0)) != nullptr;
}

bool PanelItem::activate() {
    return bus_.call(busName_, itemPath, itemInterface, "Activate", g_variant_new("(ii)", 10, 10)) != nullptr;
}

}  // namespace vantrel::desk
