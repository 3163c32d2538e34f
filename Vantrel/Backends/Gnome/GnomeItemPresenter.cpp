#include "Vantrel/Backends/Gnome/GnomeItemPresenter.hpp"

#include <utility>

namespace vantrel::gnome {

GnomeItemPresenter::GnomeItemPresenter(ShellExtension& extension, Events events, std::function<void()> ended)
    : extension_(extension), events_(std::move(events)), ended_(std::move(ended)) {}

void GnomeItemPresenter::setTexts(const std::string& title, const std::string& toolTip) {
    title_ = title;
    toolTip_ = toolTip;
    tellTexts();
}

void GnomeItemPresenter::setMenu(const Menu& menu) {
    menu_ = menu;
    for (MenuItem& item : menu_) {
        // Only its looks are of use here.
        item.action = nullptr;
    }
    tellMenu();
}

void GnomeItemPresenter::showMessage(const std::string& text) {
    if (text.empty()) {
        extension_.tell("HideMessage");
    } else {
        extension_.tell("ShowMessage", g_variant_new("(s)", text.c_str()));
    }
}

void GnomeItemPresenter::presenceChanged() {
    tellMenu();
    tellTexts();
    events_.presenceChanged();
}

void GnomeItemPresenter::tellTexts() {
    extension_.tell("SetItem", g_variant_new("(ss)", title_.c_str(), toolTip_.c_str()));
}

void GnomeItemPresenter::tellMenu() {
    GVariantBuilder rows;
    g_variant_builder_init(&rows, G_VARIANT_TYPE("a(ssbb)"));
    for (const MenuItem& item : menu_) {
        g_variant_builder_add(&rows, "(ssbb)", item.title.c_str(), item.keyEquivalent.c_str(),
                              static_cast<gboolean>(item.isEnabled), static_cast<gboolean>(item.isSeparator));
    }
    extension_.tell("SetMenu", g_variant_new("(a(ssbb))", &rows));
}

}  // namespace vantrel::gnome
