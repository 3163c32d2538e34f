#include "tests/fakes/FakeHotKeys.hpp"

#include <algorithm>
#include <string>

namespace vantrel::fake {

OSStatus FakeHotKeyBinder::bind(const backend::KeyCombination& combination) {
    bound_.push_back(combination);
    return 0;
}

bool FakeHotKeyBinder::press(const backend::KeyCombination& combination) {
    if (!isBound(combination)) {
        return false;
    }
    pressed_(combination);
    return true;
}

bool FakeHotKeyBinder::isBound(const backend::KeyCombination& combination) const {
    return std::find(bound_.begin(), bound_.end(), combination) != bound_.end();
}

FakeHotKeys::FakeHotKeys(Journal& journal) : journal_(journal) {}

FakeHotKeys::~FakeHotKeys() = default;

EventTargetRef FakeHotKeys::GetEventDispatcherTarget() {
    return registry_.GetEventDispatcherTarget();
}

OSStatus FakeHotKeys::InstallEventHandler(EventTargetRef target, EventHandlerProc handler, EventTypeSpec eventType,
                                          void* userData, EventHandlerRef& handlerRef) {
    journal_.emplace_back("InstallEventHandler");
    if (installStatus != 0) {
        return installStatus;
    }
    const OSStatus status = registry_.InstallEventHandler(target, handler, eventType, userData, handlerRef);
    if (status == 0) {
        handlerRef_ = handlerRef;
        handler_ = handler;
        userData_ = userData;
    }
    return status;
}

OSStatus FakeHotKeys::RemoveEventHandler(EventHandlerRef handler) {
    journal_.emplace_back("RemoveEventHandler");
    if (handler == handlerRef_) {
        handler_ = nullptr;
    }
    return registry_.RemoveEventHandler(handler);
}

OSStatus FakeHotKeys::RegisterEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID hotKeyID,
                                          EventTargetRef target, std::uint32_t options, EventHotKeyRef& hotKeyRef) {
    journal_.push_back("RegisterEventHotKey(" + std::to_string(keyCode) + ", " + std::to_string(modifiers) + ", id " +
                       std::to_string(hotKeyID.id) + ")");
    const Combination combination{keyCode, modifiers & combinationModifiers};
    if (const auto refusal = refusals.find(combination); refusal != refusals.end()) {
        if (refusesWithReference && refusal->second != 0) {
            hotKeyRef = reinterpret_cast<EventHotKeyRef>(&refusedToken_);
        }
        return refusal->second;
    }
    const OSStatus status = registry_.RegisterEventHotKey(keyCode, modifiers, hotKeyID, target, options, hotKeyRef);
    if (status == 0) {
        registrations_.push_back({hotKeyRef, combination, hotKeyID});
    }
    return status;
}

OSStatus FakeHotKeys::UnregisterEventHotKey(EventHotKeyRef hotKey) {
    const auto registration =
        std::find_if(registrations_.begin(), registrations_.end(),
                     [hotKey](const Registration& candidate) { return candidate.reference == hotKey; });
    if (registration == registrations_.end()) {
        journal_.emplace_back("UnregisterEventHotKey(unknown)");
    } else {
        journal_.push_back("UnregisterEventHotKey(id " + std::to_string(registration->hotKeyID.id) + ")");
        registrations_.erase(registration);
    }
    return registry_.UnregisterEventHotKey(hotKey);
}

OSStatus FakeHotKeys::GetEventParameter(EventRef event, std::uint32_t name, std::uint32_t type, std::size_t bufferSize,
                                        EventHotKeyID& hotKeyID) {
    if (readStatus != 0) {
        return readStatus;
    }
    if (event == reinterpret_cast<EventRef>(&delivered_)) {
        hotKeyID = delivered_;
        return 0;
    }
    return registry_.GetEventParameter(event, name, type, bufferSize, hotKeyID);
}

OSStatus FakeHotKeys::deliverPress(EventHotKeyID hotKeyID) {
    delivered_ = hotKeyID;
    return handler_(nullptr, reinterpret_cast<EventRef>(&delivered_), userData_);
}

bool FakeHotKeys::press(Combination combination) {
    return handler_ != nullptr && isRegistered(combination) && binder_.press({combination.first, combination.second});
}

bool FakeHotKeys::isRegistered(Combination combination) const {
    return std::any_of(registrations_.begin(), registrations_.end(),
                       [&combination](const Registration& candidate) { return candidate.combination == combination; });
}

}  // namespace vantrel::fake
