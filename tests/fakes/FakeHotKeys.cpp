#include "tests/fakes/FakeHotKeys.hpp"

#include <algorithm>
#include <string>

namespace vantrel::fake {

namespace {

constexpr OSStatus parameterError = -50;

}  // namespace

FakeHotKeys::FakeHotKeys(Journal& journal) : journal_(journal) {}

FakeHotKeys::~FakeHotKeys() = default;

EventTargetRef FakeHotKeys::GetEventDispatcherTarget() {
    return reinterpret_cast<EventTargetRef>(&target_);
}

OSStatus FakeHotKeys::InstallEventHandler(EventTargetRef target, EventHandlerProc handler, EventTypeSpec eventType,
                                          void* userData, EventHandlerRef& handlerRef) {
    journal_.emplace_back("InstallEventHandler");
    if (target != GetEventDispatcherTarget() || eventType.eventClass != kEventClassKeyboard ||
        eventType.eventKind != kEventHotKeyPressed) {
        return parameterError;
    }
    if (installStatus == 0) {
        handler_ = handler;
        userData_ = userData;
        handlerRef = reinterpret_cast<EventHandlerRef>(&handlerToken_);
    }
    return installStatus;
}

OSStatus FakeHotKeys::RemoveEventHandler(EventHandlerRef handler) {
    journal_.emplace_back("RemoveEventHandler");
    if (handler != reinterpret_cast<EventHandlerRef>(&handlerToken_) || handler_ == nullptr) {
        return parameterError;
    }
    handler_ = nullptr;
    return 0;
}

OSStatus FakeHotKeys::RegisterEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID hotKeyID,
                                          EventTargetRef target, std::uint32_t options, EventHotKeyRef& hotKeyRef) {
    journal_.push_back("RegisterEventHotKey(" + std::to_string(keyCode) + ", " + std::to_string(modifiers) + ", id " +
                       std::to_string(hotKeyID.id) + ")");
    const Combination combination{keyCode, modifiers & combinationModifiers};
    if (target != GetEventDispatcherTarget() || options != 0) {
        return parameterError;
    }
    if (const auto refusal = refusals.find(combination); refusal != refusals.end()) {
        if (refusesWithReference && refusal->second != 0) {
            hotKeyRef = reinterpret_cast<EventHotKeyRef>(&refusedToken_);
        }
        return refusal->second;
    }
    if (combination.second == 0) {
        return eventHotKeyInvalidErr;
    }
    if (isRegistered(combination)) {
        return eventHotKeyExistsErr;
    }
    tokens_.push_back(std::make_unique<char>());
    hotKeyRef = reinterpret_cast<EventHotKeyRef>(tokens_.back().get());
    registrations_.push_back(Registration{hotKeyRef, combination, hotKeyID});
    return 0;
}

OSStatus FakeHotKeys::UnregisterEventHotKey(EventHotKeyRef hotKey) {
    const auto registration =
        std::find_if(registrations_.begin(), registrations_.end(),
                     [hotKey](const Registration& candidate) { return candidate.reference == hotKey; });
    if (registration == registrations_.end()) {
        journal_.emplace_back("UnregisterEventHotKey(unknown)");
        return parameterError;
    }
    journal_.push_back("UnregisterEventHotKey(id " + std::to_string(registration->hotKeyID.id) + ")");
    registrations_.erase(registration);
    return 0;
}

OSStatus FakeHotKeys::GetEventParameter(EventRef event, std::uint32_t name, std::uint32_t type, std::size_t bufferSize,
                                        EventHotKeyID& hotKeyID) {
    if (name != kEventParamDirectObject || type != typeEventHotKeyID || bufferSize != sizeof(EventHotKeyID)) {
        return parameterError;
    }
    if (readStatus == 0) {
        hotKeyID = *reinterpret_cast<const EventHotKeyID*>(event);
    }
    return readStatus;
}

OSStatus FakeHotKeys::deliverPress(EventHotKeyID hotKeyID) {
    return handler_(nullptr, reinterpret_cast<EventRef>(&hotKeyID), userData_);
}

bool FakeHotKeys::press(Combination combination) {
    const auto registration =
        std::find_if(registrations_.begin(), registrations_.end(),
                     [&combination](const Registration& candidate) { return candidate.combination == combination; });
    if (registration == registrations_.end() || handler_ == nullptr) {
        return false;
    }
    deliverPress(registration->hotKeyID);
    return true;
}

bool FakeHotKeys::isRegistered(Combination combination) const {
    return std::any_of(registrations_.begin(), registrations_.end(), [&combination](const Registration& registration) {
        return registration.combination == combination;
    });
}

}  // namespace vantrel::fake
