#pragma once

#include "Vantrel/Platform/HotKeyServices.hpp"

namespace vantrel::wayland {

/// Where no program can bind keys: nothing is ever pressed, and whoever asks is told so.
class UnboundHotKeys final : public HotKeyServices {
  public:
    EventTargetRef GetEventDispatcherTarget() override { return nullptr; }
    OSStatus InstallEventHandler(EventTargetRef /*target*/, EventHandlerProc /*handler*/, EventTypeSpec /*eventType*/,
                                 void* /*userData*/, EventHandlerRef& /*handlerRef*/) override {
        return unimplemented;
    }
    OSStatus RemoveEventHandler(EventHandlerRef /*handler*/) override { return unimplemented; }
    OSStatus RegisterEventHotKey(std::uint32_t /*keyCode*/, std::uint32_t /*modifiers*/, EventHotKeyID /*hotKeyID*/,
                                 EventTargetRef /*target*/, std::uint32_t /*options*/,
                                 EventHotKeyRef& /*hotKeyRef*/) override {
        return eventHotKeyInvalidErr;
    }
    OSStatus UnregisterEventHotKey(EventHotKeyRef /*hotKey*/) override { return unimplemented; }
    OSStatus GetEventParameter(EventRef /*event*/, std::uint32_t /*name*/, std::uint32_t /*type*/,
                               std::size_t /*bufferSize*/, EventHotKeyID& /*hotKeyID*/) override {
        return unimplemented;
    }

  private:
    static constexpr OSStatus unimplemented = -4;  // Carbon's unimpErr
};

}  // namespace vantrel::wayland
