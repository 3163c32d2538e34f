#include "tests/desk/keys/HotKeyProbe.hpp"

#include <chrono>
#include <cstdlib>
#include <stdexcept>
#include <vector>

namespace vantrel::desk {

HotKeyProbe::HotKeyProbe(const std::string& displayName) {
    setenv("DISPLAY", displayName.c_str(), 1);
    std::string error;
    platform_ = x11::X11Session::connect(error);
    if (!platform_) {
        throw std::runtime_error(error);
    }
    platform_->attach({.ended = [](const std::string&) {}, .opened = [](const std::vector<std::string>&) {}});
    auto& hotKeys = platform_->hotKeys();
    hotKeys.InstallEventHandler(hotKeys.GetEventDispatcherTarget(), &pressed,
                                {kEventClassKeyboard, kEventHotKeyPressed}, this, handler_);
}

HotKeyProbe::~HotKeyProbe() = default;

OSStatus HotKeyProbe::pressed(EventHandlerCallRef /*call*/, EventRef event, void* userData) {
    auto& probe = *static_cast<HotKeyProbe*>(userData);
    EventHotKeyID identity;
    const OSStatus status = probe.platform_->hotKeys().GetEventParameter(event, kEventParamDirectObject,
                                                                         typeEventHotKeyID, sizeof identity, identity);
    ++probe.presses_[identity.id];
    return status;
}

OSStatus HotKeyProbe::add(std::uint32_t id, std::uint32_t keyCode, std::uint32_t modifiers) {
    auto& hotKeys = platform_->hotKeys();
    return hotKeys.RegisterEventHotKey(keyCode, modifiers, {fourCharCode("test"), id},
                                       hotKeys.GetEventDispatcherTarget(), 0, hotKeys_[id]);
}

void HotKeyProbe::remove(std::uint32_t id) {
    platform_->hotKeys().UnregisterEventHotKey(hotKeys_[id]);
    hotKeys_.erase(id);
}

int HotKeyProbe::presses(std::uint32_t id) const {
    const auto found = presses_.find(id);
    return found == presses_.end() ? 0 : found->second;
}

void HotKeyProbe::turnOnce() {
    g_main_context_iteration(nullptr, FALSE);
}

bool HotKeyProbe::turnUntil(const std::function<bool()>& condition, Duration deadline) {
    const auto end = std::chrono::steady_clock::now() + deadline;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= end) {
            return false;
        }
        if (!g_main_context_iteration(nullptr, FALSE)) {
            g_usleep(500);
        }
    }
    return true;
}

bool HotKeyProbe::waitForPresses(std::uint32_t id, int count) {
    return turnUntil([&] { return presses(id) >= count; }) && presses(id) == count;
}

bool HotKeyProbe::staysQuiet(Duration time) {
    const auto before = presses_;
    return !turnUntil([&] { return presses_ != before; }, time);
}

}  // namespace vantrel::desk
