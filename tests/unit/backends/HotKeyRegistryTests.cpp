#include "Vantrel/Backends/Common/HotKeyRegistry.hpp"

#include <glib.h>
#include <gtest/gtest.h>

#include <map>
#include <memory>

namespace vantrel::backend {
namespace {

constexpr std::uint32_t hyper = cmdKey | shiftKey | optionKey | controlKey;
constexpr EventHotKeyID first{fourCharCode("test"), 1};
constexpr EventHotKeyID second{fourCharCode("test"), 2};

class RecordingBinder final : public HotKeyBinder {
  public:
    void setPressed(Pressed pressed) override { press = std::move(pressed); }
    OSStatus bind(const KeyCombination& combination) override {
        if (answer == 0) {
            bound.push_back(combination);
        }
        return answer;
    }
    void unbind(const KeyCombination& combination) override { std::erase(bound, combination); }

    OSStatus answer = 0;
    std::vector<KeyCombination> bound;
    Pressed press;
};

class HotKeyRegistryTest : public testing::Test {
  protected:
    HotKeyRegistryTest() {
        registry.InstallEventHandler(registry.GetEventDispatcherTarget(), &pressed,
                                     {kEventClassKeyboard, kEventHotKeyPressed}, this, handler);
    }

    OSStatus add(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID id, EventHotKeyRef& given) {
        return registry.RegisterEventHotKey(keyCode, modifiers, id, registry.GetEventDispatcherTarget(), 0, given);
    }

    static void letTheLoopComeToRest() {
        while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
        }
    }

    static OSStatus pressed(EventHandlerCallRef /*call*/, EventRef event, void* userData) {
        auto& test = *static_cast<HotKeyRegistryTest*>(userData);
        EventHotKeyID id;
        const OSStatus status =
            test.registry.GetEventParameter(event, kEventParamDirectObject, typeEventHotKeyID, sizeof id, id);
        ++test.presses[id.id];
        return status;
    }

    RecordingBinder binder;
    HotKeyRegistry registry{binder};
    EventHandlerRef handler = nullptr;
    EventHotKeyRef reference = nullptr;
    std::map<std::uint32_t, int> presses;
};

TEST_F(HotKeyRegistryTest, RegisterEventHotKey_free_isBoundAndReported) {
    EventHotKeyRef other = nullptr;
    EXPECT_EQ(add(2, hyper, first, reference), 0);
    EXPECT_EQ(add(1, hyper, second, other), 0);
    EXPECT_NE(reference, nullptr);
    EXPECT_NE(reference, other);
    binder.press({2, hyper});
    EXPECT_EQ(presses, (std::map<std::uint32_t, int>{{1, 1}}));
}

TEST_F(HotKeyRegistryTest, RegisterEventHotKey_refusedByTheBinder_givesItsStatusAndNoReference) {
    for (const OSStatus status : {eventHotKeyExistsErr, eventHotKeyInvalidErr}) {
        binder.answer = status;
        EXPECT_EQ(add(2, hyper, first, reference), status);
        EXPECT_EQ(reference, nullptr);
    }
}

TEST_F(HotKeyRegistryTest, RegisterEventHotKey_sameCombinationTwice_isTaken) {
    EventHotKeyRef other = nullptr;
    ASSERT_EQ(add(2, hyper, first, reference), 0);
    // Further bits, such as Caps Lock's, are no part of a combination.
    EXPECT_EQ(add(2, hyper | 0x400U, second, other), eventHotKeyExistsErr);
    EXPECT_EQ(other, nullptr);
    EXPECT_EQ(binder.bound.size(), 1U);
}

TEST_F(HotKeyRegistryTest, RegisterEventHotKey_noneOfTheFourModifiers_isRefused) {
    EXPECT_EQ(add(2, 0, first, reference), eventHotKeyInvalidErr);
    EXPECT_EQ(add(2, 0x400U, first, reference), eventHotKeyInvalidErr);
    EXPECT_EQ(reference, nullptr);
    EXPECT_TRUE(binder.bound.empty());
}

TEST_F(HotKeyRegistryTest, RegisterEventHotKey_foreignTargetOrOptions_isRefused) {
    EXPECT_NE(registry.RegisterEventHotKey(2, hyper, first, nullptr, 0, reference), 0);
    EXPECT_NE(registry.RegisterEventHotKey(2, hyper, first, registry.GetEventDispatcherTarget(), 1, reference), 0);
    EXPECT_TRUE(binder.bound.empty());
}

TEST_F(HotKeyRegistryTest, UnregisterEventHotKey_registered_isSilentAndUnboundSoon) {
    ASSERT_EQ(add(2, hyper, first, reference), 0);
    EXPECT_EQ(registry.UnregisterEventHotKey(reference), 0);
    binder.press({2, hyper});
    EXPECT_TRUE(presses.empty());
    letTheLoopComeToRest();
    EXPECT_TRUE(binder.bound.empty());
    EXPECT_NE(registry.UnregisterEventHotKey(reference), 0);
}

TEST_F(HotKeyRegistryTest, UnregisterEventHotKey_rightBeforeTheEnd_isUnbound) {
    auto brief = std::make_unique<HotKeyRegistry>(binder);
    ASSERT_EQ(brief->RegisterEventHotKey(2, hyper, first, brief->GetEventDispatcherTarget(), 0, reference), 0);
    ASSERT_EQ(brief->UnregisterEventHotKey(reference), 0);
    brief.reset();
    EXPECT_TRUE(binder.bound.empty());
}

TEST_F(HotKeyRegistryTest, RegisterEventHotKey_justUnregistered_asksNobody) {
    ASSERT_EQ(add(2, hyper, first, reference), 0);
    ASSERT_EQ(registry.UnregisterEventHotKey(reference), 0);
    binder.answer = eventHotKeyInvalidErr;
    EXPECT_EQ(add(2, hyper, second, reference), 0);
    letTheLoopComeToRest();
    EXPECT_EQ(binder.bound.size(), 1U);
    binder.press({2, hyper});
    EXPECT_EQ(presses, (std::map<std::uint32_t, int>{{second.id, 1}}));
}

TEST_F(HotKeyRegistryTest, RemoveEventHandler_installed_endsTheReports) {
    ASSERT_EQ(add(2, hyper, first, reference), 0);
    EXPECT_EQ(registry.RemoveEventHandler(handler), 0);
    EXPECT_NE(registry.RemoveEventHandler(handler), 0);
    binder.press({2, hyper});
    EXPECT_TRUE(presses.empty());
}

TEST_F(HotKeyRegistryTest, InstallEventHandler_otherEventsOrNoCallback_isRefused) {
    EventHandlerRef other = nullptr;
    const EventTargetRef target = registry.GetEventDispatcherTarget();
    const EventTypeSpec pressedType{kEventClassKeyboard, kEventHotKeyPressed};
    EXPECT_NE(registry.InstallEventHandler(nullptr, &pressed, pressedType, this, other), 0);
    EXPECT_NE(registry.InstallEventHandler(target, nullptr, pressedType, this, other), 0);
    EXPECT_NE(registry.InstallEventHandler(target, &pressed, {kEventClassKeyboard, 6}, this, other), 0);
    EXPECT_EQ(other, nullptr);
}

}  // namespace
}  // namespace vantrel::backend
