#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "Vantrel/Backends/Common/HotKeyBinder.hpp"
#include "Vantrel/Handles/LoopSource.hpp"
#include "Vantrel/Platform/HotKeyServices.hpp"

namespace vantrel::backend {

/// The hot keys as the controller sees them, over whatever binds keys. A combination that is unregistered is silent at
/// once and let go of when the loop comes to rest: one that is registered again before that, such as a shortcut that is
/// kept because the new one is refused, needs no answer of a desktop that may be too busy to give it.
class HotKeyRegistry final : public HotKeyServices {
  public:
    /// The binder outlives this object.
    explicit HotKeyRegistry(HotKeyBinder& binder);
    ~HotKeyRegistry() override;
    HotKeyRegistry(const HotKeyRegistry&) = delete;
    HotKeyRegistry& operator=(const HotKeyRegistry&) = delete;

    EventTargetRef GetEventDispatcherTarget() override;
    OSStatus InstallEventHandler(EventTargetRef target, EventHandlerProc handler, EventTypeSpec eventType,
                                 void* userData, EventHandlerRef& handlerRef) override;
    OSStatus RemoveEventHandler(EventHandlerRef handler) override;
    OSStatus RegisterEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID hotKeyID,
                                 EventTargetRef target, std::uint32_t options, EventHotKeyRef& hotKeyRef) override;
    OSStatus UnregisterEventHotKey(EventHotKeyRef hotKey) override;
    OSStatus GetEventParameter(EventRef event, std::uint32_t name, std::uint32_t type, std::size_t bufferSize,
                               EventHotKeyID& hotKeyID) override;

  private:
    struct HotKey;
    struct Handler;

    void pressed(const KeyCombination& combination) const;
    [[nodiscard]] const HotKey* find(const KeyCombination& combination) const;
    void unbindReleased();

    HotKeyBinder& binder_;
    std::vector<std::unique_ptr<HotKey>> hotKeys_;
    std::vector<std::unique_ptr<Handler>> handlers_;
    std::vector<KeyCombination> released_;  // still bound
    LoopSource unbinding_;
};

}  // namespace vantrel::backend
