#include "Vantrel/Desktop/StatusItem/DesktopStatusBar.hpp"

#include "Vantrel/Desktop/StatusItem/DesktopStatusItem.hpp"

namespace vantrel::desktop {

DesktopStatusBar::DesktopStatusBar(PresenterMaker makePresenter, Helper::Start startOverlay)
    : makePresenter_(std::move(makePresenter)), startOverlay_(std::move(startOverlay)) {}

DesktopStatusBar::~DesktopStatusBar() = default;

void DesktopStatusBar::setSessionBus(GDBusConnection* bus) {
    bus_ = shareObject(bus);
    for (DesktopStatusItem* item : items_) {
        item->setSessionBus(bus);
    }
}

std::unique_ptr<StatusItem> DesktopStatusBar::statusItem(double /*length*/) {
    auto item = std::make_unique<DesktopStatusItem>(*this);
    items_.push_back(item.get());
    item->setSessionBus(bus_.get());
    return item;
}

void DesktopStatusBar::forget(const DesktopStatusItem& item) {
    std::erase(items_, &item);
}

}  // namespace vantrel::desktop
