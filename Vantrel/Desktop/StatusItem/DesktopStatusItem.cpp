#include "Vantrel/Desktop/StatusItem/DesktopStatusItem.hpp"

#include <functional>
#include <utility>

#include "Vantrel/Desktop/StatusItem/DesktopStatusBar.hpp"
#include "Vantrel/Desktop/StatusItem/PanelLabel.hpp"

namespace vantrel::desktop {

namespace {

constexpr auto menuPath = "/org/vantrel/Vantrel/Menu";

/// The text as the bus and the screen take it: valid UTF-8 without NUL.
std::string validText(const std::string& text) {
    const GCharPointer valid(g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
    return valid.get();
}

/// As much of the text as a screen can hold.
std::string beginning(const std::string& text) {
    constexpr glong mostCharacters = 500;
    const GCharPointer cut(g_utf8_strlen(text.c_str(), -1) <= mostCharacters
                               ? nullptr
                               : g_utf8_substring(text.c_str(), 0, mostCharacters));
    return cut ? cut.get() : text;
}

}  // namespace

DesktopStatusItem::DesktopStatusItem(DesktopStatusBar& statusBar)
    : statusBar_(statusBar),
      overlay_(statusBar.startOverlay(), [this](std::uint32_t row) { performRow(row); }),
      presenter_(statusBar.makePresenter({.pressed = [this] { popUpMenu(); },
                                          .rowChosen = [this](std::size_t row) { performRow(row); },
                                          .presenceChanged = [this] { presenterChanged(); }})) {
    if (presenter_) {
        presenter_->setWanted(true);
    }
}

DesktopStatusItem::~DesktopStatusItem() {
    leaveBus();
    statusBar_.forget(*this);
}

void DesktopStatusItem::setSessionBus(GDBusConnection* bus) {
    if (bus == bus_.get()) {
        return;
    }
    leaveBus();
    if (bus == nullptr || g_dbus_connection_is_closed(bus)) {
        presenceChanged();
        return;
    }
    bus_ = shareObject(bus);
    busClosedHandler_ = g_signal_connect(bus, "closed", G_CALLBACK(busClosed), this);
    busMenu_ = std::make_unique<BusMenu>(menuPath, [this](std::size_t row) { performRow(row); });
    publishMenu();
    offerToHosts();
}

void DesktopStatusItem::offerToHosts() {
    if (!bus_ || (isPresentedWhole() && presenter_->isShown())) {
        notifierItem_.reset();
    } else if (!notifierItem_) {
        notifierItem_ = std::make_unique<StatusNotifierItem>(
            bus_.get(), menuPath, StatusNotifierItem::Texts{title_, toolTip_},
            StatusNotifierItem::Events{.presenceChanged = [this] { presenceChanged(); },
                                       .menuWanted = [this] { popUpMenu(); }});
    }
}

void DesktopStatusItem::presenterChanged() {
    offerToHosts();
    presenceChanged();
}

void DesktopStatusItem::busClosed(GDBusConnection* /*bus*/, gboolean /*remotePeerVanished*/, GError* /*error*/,
                                  gpointer data) {
    auto& item = *static_cast<DesktopStatusItem*>(data);
    item.leaveBus();
    item.presenceChanged();
}

void DesktopStatusItem::leaveBus() {
    notifierItem_.reset();
    busMenu_.reset();
    if (bus_) {
        g_signal_handler_disconnect(bus_.get(), std::exchange(busClosedHandler_, 0));
        bus_.reset();
    }
}

void DesktopStatusItem::presenceChanged() {
    const bool isQt = notifierItem_ && notifierItem_->isQtHost();
    const KeyHintStyle style = isQt ? KeyHintStyle::characters : KeyHintStyle::x11Names;
    if (std::exchange(keyHintStyle_, style) != style) {
        publishMenuLater();
    }
    if (presenter_) {
        presenter_->setWanted(!hasHost());
    }
    updateScreenText();
}

void DesktopStatusItem::setTitle(const std::string& title) {
    title_ = validText(title);
    if (!restingTitle_) {
        restingTitle_ = title_;
    }
    if (notifierItem_) {
        notifierItem_->setLabel(title_);
    }
    updatePresentedTexts();
    updateScreenText();
}

void DesktopStatusItem::updateScreenText() {
    const bool isMessage = title_ != restingTitle_ && !title_.empty();
    if (isPresentedWhole()) {
        presenter_->showMessage(isMessage ? beginning(title_) : std::string());
    } else if (isMessage && !isTitleSeenInPanel()) {
        screenText_.text = beginning(title_);
        overlay_.showText(screenText_);
    } else {
        overlay_.hideText();
    }
}

void DesktopStatusItem::updatePresentedTexts() {
    if (presenter_) {
        presenter_->setTexts(panelLabel(title_), toolTip_);
    }
}

bool DesktopStatusItem::isTitleSeenInPanel() const {
    return notifierItem_ && notifierItem_->drawsLabel();
}

void DesktopStatusItem::setToolTip(const std::string& toolTip) {
    toolTip_ = validText(toolTip);
    if (notifierItem_) {
        notifierItem_->setToolTip(toolTip_);
    }
    updatePresentedTexts();
}

// Panels choose the font of their labels themselves; the text on the screen has this one.
void DesktopStatusItem::setFont(double size, FontWeight weight) {
    screenText_.fontSize = size;
    screenText_.isSemibold = weight == FontWeight::semibold;
}

void DesktopStatusItem::setMenu(Menu menu) {
    for (MenuItem& item : menu) {
        item.title = validText(item.title);
    }
    menu_ = std::move(menu);
    publishMenuLater();
}

// Once for all the rebuilds of one turn of the loop: libdbusmenu lets go of a menu only in the next turn.
void DesktopStatusItem::publishMenuLater() {
    if (!menuTask_.isSet()) {
        menuTask_ = LoopSource::after({}, [this] { publishMenu(); });
    }
}

void DesktopStatusItem::publishMenu() {
    if (busMenu_) {
        busMenu_->setMenu(menu_, keyHintStyle_);
    }
    if (presenter_) {
        presenter_->setMenu(menu_);
    }
    if (overlay_.isMenuOpen()) {
        overlay_.updateMenu(menuRows());
    }
}

std::vector<MenuRow> DesktopStatusItem::menuRows() const {
    std::vector<MenuRow> rows;
    for (const MenuItem& item : menu_) {
        rows.push_back({.isSeparator = item.isSeparator,
                        .isEnabled = !item.isSeparator && item.isEnabled,
                        .title = item.title,
                        .keyEquivalent = item.keyEquivalent});
    }
    return rows;
}

bool DesktopStatusItem::isVisible() const {
    return hasHost() || (presenter_ && presenter_->isShown());
}

void DesktopStatusItem::popUpMenu() {
    // Where the desktop shows the whole item nothing else opens a menu.
    if (!isPresentedWhole()) {
        overlay_.openMenu(menuRows());
    }
}

void DesktopStatusItem::performRow(std::size_t row) {
    if (row >= menu_.size() || !menu_[row].isEnabled || !menu_[row].action) {
        return;
    }
    // The action may replace the menu that holds it.
    const std::function<void()> action = menu_[row].action;
    action();
}

}  // namespace vantrel::desktop
