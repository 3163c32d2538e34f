#pragma once

#include <map>
#include <utility>
#include <vector>

#include "Vantrel/Backends/Common/HotKeyRegistry.hpp"
#include "tests/fakes/Journal.hpp"

namespace vantrel::fake {

/// A keyboard in memory.
class FakeHotKeyBinder final : public backend::HotKeyBinder {
  public:
    void setPressed(Pressed pressed) override { pressed_ = std::move(pressed); }
    OSStatus bind(const backend::KeyCombination& combination) override;
    void unbind(const backend::KeyCombination& combination) override { std::erase(bound_, combination); }

    /// Presses the keys; false, and nothing happens, when they are not bound.
    bool press(const backend::KeyCombination& combination);
    [[nodiscard]] bool isBound(const backend::KeyCombination& combination) const;

  private:
    Pressed pressed_;
    std::vector<backend::KeyCombination> bound_;
};

/// A keyboard that tests press, and other programs that hold keys of it: the hot keys that every backend has, over
/// a keyboard in memory, with what can go wrong at the face of it.
class FakeHotKeys final : public HotKeyServices {
  public:
    /// Key code and modifier mask.
    using Combination = std::pair<std::uint32_t, std::uint32_t>;

    struct Registration {
        EventHotKeyRef reference;
        Combination combination;
        EventHotKeyID hotKeyID;
    };

    explicit FakeHotKeys(Journal& journal);
    ~FakeHotKeys() override;
    FakeHotKeys(const FakeHotKeys&) = delete;
    FakeHotKeys& operator=(const FakeHotKeys&) = delete;

    EventTargetRef GetEventDispatcherTarget() override;
    OSStatus InstallEventHandler(EventTargetRef target, EventHandlerProc handler, EventTypeSpec eventType,
                                 void* userData, EventHandlerRef& handlerRef) override;
    OSStatus RemoveEventHandler(EventHandlerRef handler) override;
    OSStatus RegisterEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID hotKeyID,
                                 EventTargetRef target, std::uint32_t options, EventHotKeyRef& hotKeyRef) override;
    OSStatus UnregisterEventHotKey(EventHotKeyRef hotKey) override;
    OSStatus GetEventParameter(EventRef event, std::uint32_t name, std::uint32_t type, std::size_t bufferSize,
                               EventHotKeyID& hotKeyID) override;

    /// Delivers a press of that identity, registered or not: what the handler returned.
    OSStatus deliverPress(EventHotKeyID hotKeyID);

    /// Presses the keys; false, and nothing happens, when nobody registered them or no handler is installed.
    bool press(Combination combination);

    /// What is registered at present, in the order of registration.
    [[nodiscard]] const std::vector<Registration>& registrations() const { return registrations_; }
    [[nodiscard]] bool isRegistered(Combination combination) const;
    [[nodiscard]] bool hasHandler() const { return handler_ != nullptr; }

    std::map<Combination, OSStatus> refusals;  ///< what registering them returns; 0 gives an empty reference
    bool refusesWithReference = false;         ///< whether a refusal with a status gives a reference all the same
    OSStatus installStatus = 0;                ///< what installing a handler returns
    OSStatus readStatus = 0;                   ///< what reading a press returns

  private:
    Journal& journal_;
    FakeHotKeyBinder binder_;
    backend::HotKeyRegistry registry_{binder_};
    char refusedToken_ = 0;
    std::vector<Registration> registrations_;
    EventHotKeyID delivered_;  ///< an event of the tests' own
    EventHandlerRef handlerRef_ = nullptr;
    EventHandlerProc handler_ = nullptr;
    void* userData_ = nullptr;
};

}  // namespace vantrel::fake
