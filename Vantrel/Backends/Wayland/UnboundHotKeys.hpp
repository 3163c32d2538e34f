#pragma once

#include "Vantrel/Backends/Common/HotKeyBinder.hpp"

namespace vantrel::wayland {

/// Where no program can bind keys.
class UnboundHotKeys final : public backend::HotKeyBinder {
  public:
    void setPressed(Pressed /*pressed*/) override {}
    OSStatus bind(const backend::KeyCombination& /*combination*/) override { return eventHotKeyInvalidErr; }
    void unbind(const backend::KeyCombination& /*combination*/) override {}
};

}  // namespace vantrel::wayland
