#include "Vantrel/Controller/AppDelegate.hpp"

#include "Vantrel/Platform/FatalError.hpp"

namespace vantrel {

std::shared_ptr<AppDelegate> AppDelegate::create(const Platform& platform, std::uint32_t hotKeySignature,
                                                 EventHandlerProc hotKeyHandler) {
    return std::make_shared<AppDelegate>(CreationKey(), platform, hotKeySignature, hotKeyHandler);
}

AppDelegate::AppDelegate(CreationKey /*key*/, const Platform& platform, std::uint32_t hotKeySignature,
                         EventHandlerProc hotKeyHandler)
    : platform_(platform),
      hotKeySignature_(hotKeySignature),
      hotKeyHandler_(hotKeyHandler),
      statusItem(platform.systemStatusBar.statusItem(StatusBar::variableStatusItemLength)),
      defaults(platform.standardUserDefaults) {}

AppDelegate::~AppDelegate() {
    defaults.setLateReadHandler(nullptr);
}

void AppDelegate::applicationDidFinishLaunching() {
    assertMainThread("applicationDidFinishLaunching");
    platform_.application.setActivationPolicy(ActivationPolicy::accessory);
    loadSettings();
    defaults.setLateReadHandler([this](const UserDefaults::Values& stored) { takeInLateReading(stored); });
    dressStatusItem();
    installHotKeyHandler();
    registerPrimaryHotKeyAtLaunch();
    registerSecondaryHotKeys();
    rebuildMenu();
}

void AppDelegate::applicationWillTerminate() {
    assertMainThread("applicationWillTerminate");
    if (animationTimer) {
        animationTimer->invalidate();
    }
    unregisterHotKeys();
}

void AppDelegate::applicationDidReopen() {
    assertMainThread("applicationDidReopen");
    // With no panel to show the item, starting the program again is the one way to its menu.
    if (statusItem->isVisible()) {
        openSettings();
    } else {
        statusItem->popUpMenu();
    }
}

void AppDelegate::dressStatusItem() {
    StatusBarButton* const button = statusItem->button();
    if (button == nullptr) {
        return;
    }
    button->setTitle(normalStatusTitle);
    button->setToolTip(normalStatusTitle);
    button->setFont(12, FontWeight::semibold);
}

void AppDelegate::assertMainThread(std::string_view operation) const {
    if (!platform_.mainQueue.isMainThread()) {
        fatalError(std::string(operation) + " must be called on the main thread");
    }
}

}  // namespace vantrel
