#include "Vantrel/Controller/AppDelegate.hpp"

namespace vantrel {

namespace {

constexpr Seconds flashDuration{1.2};

}  // namespace

void AppDelegate::flashStatus(const std::string& message) {
    if (statusResetItem) {
        statusResetItem->cancel();
    }
    if (StatusBarButton* const button = statusItem->button()) {
        button->setTitle(message);
    }
    statusResetItem = std::make_shared<DispatchWorkItem>([weakController = weak_from_this()] {
        if (const auto controller = weakController.lock()) {
            controller->resetStatusTitle();
        }
    });
    platform_.mainQueue.asyncAfter(flashDuration, statusResetItem);
}

void AppDelegate::resetStatusTitle() {
    assertMainThread("resetStatusTitle");
    if (StatusBarButton* const button = statusItem->button()) {
        button->setTitle(normalStatusTitle);
    }
}

}  // namespace vantrel
