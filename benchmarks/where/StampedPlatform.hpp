#pragma once

#include <vector>

#include "Vantrel/Platform/Platform.hpp"
#include "benchmarks/where/JumpStamps.hpp"

namespace vantrel::bench {

/// Collects the moments of jump after jump.
class JumpRecorder {
  public:
    explicit JumpRecorder(std::size_t expectedJumps) { jumps_.reserve(expectedJumps); }

    /// Notes that the present jump passes through the moment now.
    void note(Moment moment) { present_[static_cast<std::size_t>(moment)] = nanosecondsNow(); }
    void noteIfFirst(Moment moment) {
        if (present_[static_cast<std::size_t>(moment)] == 0) {
            note(moment);
        }
    }
    void endJump() {
        jumps_.push_back(present_);
        present_ = {};
    }

    [[nodiscard]] const std::vector<JumpStamps>& jumps() const { return jumps_; }

  private:
    std::vector<JumpStamps> jumps_;
    JumpStamps present_{};
};

// Each of these hands everything on to the real ability and notes when that happened.

class StampedDisplays final : public DisplayServices {
  public:
    StampedDisplays(DisplayServices& real, JumpRecorder& recorder) : real_(real), recorder_(recorder) {}

    CGError CGGetActiveDisplayList(std::span<CGDirectDisplayID> activeDisplays, std::uint32_t& displayCount) override {
        recorder_.noteIfFirst(Moment::begun);
        return real_.CGGetActiveDisplayList(activeDisplays, displayCount);
    }
    CGRect CGDisplayBounds(CGDirectDisplayID display) override { return real_.CGDisplayBounds(display); }

  private:
    DisplayServices& real_;
    JumpRecorder& recorder_;
};

class StampedPointer final : public PointerReader, public PointerWarper {
  public:
    StampedPointer(PointerReader& reader, PointerWarper& warper, JumpRecorder& recorder)
        : reader_(reader), warper_(warper), recorder_(recorder) {}

    std::optional<CGEvent> CGEventCreate() override { return reader_.CGEventCreate(); }
    CGPoint CGEventGetLocation(const CGEvent& event) override {
        const CGPoint location = reader_.CGEventGetLocation(event);
        recorder_.note(Moment::asked);
        return location;
    }
    void CGWarpMouseCursorPosition(CGPoint position) override {
        recorder_.note(Moment::planned);
        warper_.CGWarpMouseCursorPosition(position);
        recorder_.note(Moment::warped);
        recorder_.endJump();
    }
    void CGAssociateMouseAndMouseCursorPosition(bool connected) override {
        warper_.CGAssociateMouseAndMouseCursorPosition(connected);
    }

  private:
    PointerReader& reader_;
    PointerWarper& warper_;
    JumpRecorder& recorder_;
};

class StampedDefaults final : public UserDefaults {
  public:
    StampedDefaults(UserDefaults& real, JumpRecorder& recorder) : real_(real), recorder_(recorder) {}

    void setLateReadHandler(LateReadHandler handler) override { real_.setLateReadHandler(std::move(handler)); }
    std::optional<DefaultsValue> objectForKey(std::string_view key) override { return real_.objectForKey(key); }
    std::optional<std::string> stringForKey(std::string_view key) override { return real_.stringForKey(key); }
    bool boolForKey(std::string_view key) override { return real_.boolForKey(key); }
    std::int64_t integerForKey(std::string_view key) override { return real_.integerForKey(key); }
    std::optional<std::string> dataForKey(std::string_view key) override { return real_.dataForKey(key); }
    void setObjects(std::initializer_list<Entry> entries) override {
        recorder_.note(Moment::encoded);
        real_.setObjects(entries);
        recorder_.note(Moment::stored);
    }

  private:
    UserDefaults& real_;
    JumpRecorder& recorder_;
};

class StampedHotKeys final : public HotKeyServices {
  public:
    StampedHotKeys(HotKeyServices& real, JumpRecorder& recorder) : real_(real), recorder_(recorder) {}

    EventTargetRef GetEventDispatcherTarget() override { return real_.GetEventDispatcherTarget(); }
    OSStatus InstallEventHandler(EventTargetRef target, EventHandlerProc handler, EventTypeSpec eventType,
                                 void* userData, EventHandlerRef& handlerRef) override {
        handler_ = handler;
        userData_ = userData;
        return real_.InstallEventHandler(target, &pressed, eventType, this, handlerRef);
    }
    OSStatus RemoveEventHandler(EventHandlerRef handler) override { return real_.RemoveEventHandler(handler); }
    OSStatus RegisterEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID hotKeyID,
                                 EventTargetRef target, std::uint32_t options, EventHotKeyRef& hotKeyRef) override {
        return real_.RegisterEventHotKey(keyCode, modifiers, hotKeyID, target, options, hotKeyRef);
    }
    OSStatus UnregisterEventHotKey(EventHotKeyRef hotKey) override { return real_.UnregisterEventHotKey(hotKey); }
    OSStatus GetEventParameter(EventRef event, std::uint32_t name, std::uint32_t type, std::size_t bufferSize,
                               EventHotKeyID& hotKeyID) override {
        return real_.GetEventParameter(event, name, type, bufferSize, hotKeyID);
    }

  private:
    static OSStatus pressed(EventHandlerCallRef call, EventRef event, void* userData) {
        auto& self = *static_cast<StampedHotKeys*>(userData);
        self.recorder_.note(Moment::reported);
        return self.handler_(call, event, self.userData_);
    }

    HotKeyServices& real_;
    JumpRecorder& recorder_;
    EventHandlerProc handler_ = nullptr;
    void* userData_ = nullptr;
};

/// A platform whose abilities note the moments of a jump; everything else is the real one's.
class StampedPlatform {
  public:
    StampedPlatform(const Platform& real, JumpRecorder& recorder)
        : real_(real),
          displays_(real.displays, recorder),
          pointer_(real.pointerReader, real.pointerWarper, recorder),
          hotKeys_(real.hotKeys, recorder),
          defaults_(real.standardUserDefaults, recorder) {}

    Platform abilities() {
        return {real_.application,
                displays_,
                pointer_,
                pointer_,
                hotKeys_,
                real_.mainQueue,
                real_.runLoop,
                defaults_,
                real_.systemStatusBar,
                real_.sounds,
                real_.uuids,
                real_.urls,
                real_.preferencesWindowViews};
    }

  private:
    Platform real_;
    StampedDisplays displays_;
    StampedPointer pointer_;
    StampedHotKeys hotKeys_;
    StampedDefaults defaults_;
};

}  // namespace vantrel::bench
