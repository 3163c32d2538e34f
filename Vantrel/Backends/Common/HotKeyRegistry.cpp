#include "Vantrel/Backends/Common/HotKeyRegistry.hpp"

#include <algorithm>
#include <utility>

namespace vantrel::backend {

namespace {

constexpr OSStatus noErr = 0;
constexpr OSStatus paramErr = -50;
constexpr OSStatus eventParameterNotFoundErr = -9870;
constexpr OSStatus eventHandlerNotFoundErr = -9876;

}  // namespace

struct HotKeyRegistry::HotKey {
    KeyCombination combination;
    EventHotKeyID identity;
};

struct HotKeyRegistry::Handler {
    EventHandlerProc callback;
    void* userData;
};

HotKeyRegistry::HotKeyRegistry(HotKeyBinder& binder) : binder_(binder) {
    binder_.setPressed([this](const KeyCombination& combination) { pressed(combination); });
}

HotKeyRegistry::~HotKeyRegistry() {
    unbindReleased();
    binder_.setPressed({});
}

EventTargetRef HotKeyRegistry::GetEventDispatcherTarget() {
    return reinterpret_cast<EventTargetRef>(this);
}

OSStatus HotKeyRegistry::InstallEventHandler(EventTargetRef target, EventHandlerProc handler, EventTypeSpec eventType,
                                             void* userData, EventHandlerRef& handlerRef) {
    if (target != GetEventDispatcherTarget() || handler == nullptr || eventType.eventClass != kEventClassKeyboard ||
        eventType.eventKind != kEventHotKeyPressed) {
        return paramErr;
    }
    handlers_.push_back(std::make_unique<Handler>(Handler{handler, userData}));
    handlerRef = reinterpret_cast<EventHandlerRef>(handlers_.back().get());
    return noErr;
}

OSStatus HotKeyRegistry::RemoveEventHandler(EventHandlerRef handler) {
    const auto erased = std::erase_if(handlers_, [handler](const std::unique_ptr<Handler>& candidate) {
        return reinterpret_cast<EventHandlerRef>(candidate.get()) == handler;
    });
    return erased > 0 ? noErr : eventHandlerNotFoundErr;
}

OSStatus HotKeyRegistry::RegisterEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID hotKeyID,
                                             EventTargetRef target, std::uint32_t options, EventHotKeyRef& hotKeyRef) {
    hotKeyRef = nullptr;
    if (target != GetEventDispatcherTarget() || options != 0) {
        return paramErr;
    }
    const KeyCombination combination{keyCode, modifiers & combinationModifiers};
    if (combination.modifiers == 0) {
        return eventHotKeyInvalidErr;
    }
    if (find(combination) != nullptr) {
        return eventHotKeyExistsErr;
    }
    if (std::erase(released_, combination) == 0) {
        if (const OSStatus status = binder_.bind(combination); status != noErr) {
            return status;
        }
    }
    hotKeys_.push_back(std::make_unique<HotKey>(HotKey{combination, hotKeyID}));
    hotKeyRef = reinterpret_cast<EventHotKeyRef>(hotKeys_.back().get());
    return noErr;
}

OSStatus HotKeyRegistry::UnregisterEventHotKey(EventHotKeyRef hotKey) {
    const auto found = std::find_if(hotKeys_.begin(), hotKeys_.end(), [hotKey](const auto& candidate) {
        return reinterpret_cast<EventHotKeyRef>(candidate.get()) == hotKey;
    });
    if (found == hotKeys_.end()) {
        return paramErr;
    }
    released_.push_back((*found)->combination);
    hotKeys_.erase(found);
    unbinding_ = LoopSource::whenIdle([this] { unbindReleased(); });
    return noErr;
}

void HotKeyRegistry::unbindReleased() {
    for (const KeyCombination& combination : std::exchange(released_, {})) {
        binder_.unbind(combination);
    }
}

OSStatus HotKeyRegistry::GetEventParameter(EventRef event, std::uint32_t name, std::uint32_t type,
                                           std::size_t bufferSize, EventHotKeyID& hotKeyID) {
    if (event == nullptr || bufferSize < sizeof(EventHotKeyID)) {
        return paramErr;
    }
    if (name != kEventParamDirectObject || type != typeEventHotKeyID) {
        return eventParameterNotFoundErr;
    }
    hotKeyID = reinterpret_cast<const HotKey*>(event)->identity;
    return noErr;
}

void HotKeyRegistry::pressed(const KeyCombination& combination) const {
    const HotKey* const hotKey = find(combination);
    if (hotKey == nullptr || handlers_.empty()) {
        return;
    }
    const Handler handler = *handlers_.back();
    handler.callback(nullptr, reinterpret_cast<EventRef>(hotKey), handler.userData);
}

const HotKeyRegistry::HotKey* HotKeyRegistry::find(const KeyCombination& combination) const {
    const auto found = std::find_if(hotKeys_.begin(), hotKeys_.end(), [&combination](const auto& candidate) {
        return candidate->combination == combination;
    });
    return found == hotKeys_.end() ? nullptr : found->get();
}

}  // namespace vantrel::backend
