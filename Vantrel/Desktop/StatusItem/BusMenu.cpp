#include "Vantrel/Desktop/StatusItem/BusMenu.hpp"

#include <algorithm>
#include <utility>

namespace vantrel::desktop {

namespace {

/// An underscore marks an access key in menus on the bus; two of them are one to read.
std::string escapedTitle(const std::string& title) {
    std::string escaped;
    for (const char character : title) {
        escaped.append(character == '_' ? 2 : 1, character);
    }
    return escaped;
}

/// The identifier of a row; 0 is the menu itself.
int rowIdentifier(std::size_t row) {
    return static_cast<int>(row) + 1;
}

/// Gives the row the item's looks; the library reports only what differs from before.
void describe(DbusmenuMenuitem* row, const MenuItem& item, KeyHintStyle keyHintStyle) {
    dbusmenu_menuitem_property_set(row, DBUSMENU_MENUITEM_PROP_LABEL, escapedTitle(item.title).c_str());
    dbusmenu_menuitem_property_set_bool(row, DBUSMENU_MENUITEM_PROP_ENABLED, item.isEnabled);
    if (item.keyEquivalent.empty()) {
        dbusmenu_menuitem_property_remove(row, DBUSMENU_MENUITEM_PROP_SHORTCUT);
    } else {
        dbusmenu_menuitem_property_set_variant(row, DBUSMENU_MENUITEM_PROP_SHORTCUT,
                                               keyHint(item.keyEquivalent, keyHintStyle));
    }
}

}  // namespace

BusMenu::BusMenu(const std::string& objectPath, std::function<void(std::size_t)> rowChosen)
    : rowChosen_(std::make_shared<RowChosen>(std::move(rowChosen))), server_(dbusmenu_server_new(objectPath.c_str())) {}

BusMenu::~BusMenu() {
    *rowChosen_ = nullptr;
}

void BusMenu::setMenu(const Menu& menu, KeyHintStyle keyHintStyle) {
    if (!hasRowsOf(menu)) {
        makeRows(menu);
    }
    for (std::size_t row = 0; row < menu.size(); ++row) {
        if (!menu[row].isSeparator) {
            describe(rows_[row].get(), menu[row], keyHintStyle);
        }
    }
}

bool BusMenu::hasRowsOf(const Menu& menu) const {
    return menu.size() == separators_.size() &&
           std::equal(menu.begin(), menu.end(), separators_.begin(),
                      [](const MenuItem& item, bool isSeparator) { return item.isSeparator == isSeparator; });
}

void BusMenu::makeRows(const Menu& menu) {
    rows_.clear();
    separators_.clear();
    const GObjectPointer<DbusmenuMenuitem> root(dbusmenu_menuitem_new());
    for (std::size_t row = 0; row < menu.size(); ++row) {
        rows_.push_back(makeRow(menu[row], row));
        separators_.push_back(menu[row].isSeparator);
        dbusmenu_menuitem_child_append(root.get(), rows_.back().get());
    }
    dbusmenu_server_set_root(server_.get(), root.get());
}

GObjectPointer<DbusmenuMenuitem> BusMenu::makeRow(const MenuItem& item, std::size_t row) {
    GObjectPointer<DbusmenuMenuitem> result(dbusmenu_menuitem_new_with_id(rowIdentifier(row)));
    if (item.isSeparator) {
        dbusmenu_menuitem_property_set(result.get(), DBUSMENU_MENUITEM_PROP_TYPE, DBUSMENU_CLIENT_TYPES_SEPARATOR);
        return result;
    }
    auto chosen = std::make_unique<std::shared_ptr<RowChosen>>(rowChosen_);
    g_signal_connect_data(result.get(), DBUSMENU_MENUITEM_SIGNAL_ITEM_ACTIVATED, G_CALLBACK(rowActivated),
                          chosen.release(), releaseRowChosen, GConnectFlags{});
    return result;
}

void BusMenu::rowActivated(DbusmenuMenuitem* row, guint /*timestamp*/, gpointer data) {
    // The menu may end in the call, and empties its own copy then.
    const RowChosen chosen = **static_cast<std::shared_ptr<RowChosen>*>(data);
    if (chosen) {
        chosen(static_cast<std::size_t>(dbusmenu_menuitem_get_id(row) - 1));
    }
}

void BusMenu::releaseRowChosen(gpointer data, GClosure* /*closure*/) {
    const std::unique_ptr<std::shared_ptr<RowChosen>> chosen(static_cast<std::shared_ptr<RowChosen>*>(data));
}

}  // namespace vantrel::desktop
