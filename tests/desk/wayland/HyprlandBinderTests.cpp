// The hot keys of a Hyprland without the protocol for them, by its own bindings: the binder in the test's own process.
#include <glib.h>
#include <gtest/gtest.h>

#include "Vantrel/Backends/Hyprland/HyprlandHotKeyBinder.hpp"
#include "tests/desk/wayland/support/HyprlandDesk.hpp"

namespace vantrel::desk {
namespace {

using hyprland::HyprlandHotKeyBinder;

constexpr backend::KeyCombination hyperD{.keyCode = 2, .modifiers = combinationModifiers};
constexpr xkb_keycode_t dPlace = 40;

wayland::KeymapPointer ordinaryKeymap(hyprland::Clock::time_point /*deadline*/) {
    const std::unique_ptr<xkb_context, decltype(&xkb_context_unref)> context(xkb_context_new(XKB_CONTEXT_NO_FLAGS),
                                                                             &xkb_context_unref);
    return wayland::KeymapPointer(xkb_keymap_new_from_names(context.get(), nullptr, XKB_KEYMAP_COMPILE_NO_FLAGS));
}

class HyprlandBinder : public testing::Test {
  protected:
    void start(const std::string& configuration = {}) {
        session = std::make_unique<HyprlandDesk>(HyprlandDesk::twoDisplays(configuration));
        commands.emplace(session->hyprland().instance() / ".socket.sock");
        makeBinder();
    }

    void makeBinder() {
        binder = std::make_unique<HyprlandHotKeyBinder>(
            *commands, hyprland::Language::lua, session->hyprland().instance() / ".socket2.sock", ordinaryKeymap);
        binder->setPressed([this](const backend::KeyCombination& combination) { pressed.push_back(combination); });
    }

    /// Binds Hyper + D; again where a busy compositor does not answer in time.
    bool bind() {
        return waitUntil([this] { return binder->bind(hyperD) == 0; });
    }

    /// Presses Hyper + D, and gives it the time in which it would be told.
    std::size_t press() {
        pressed.clear();
        session->person().type(hyper(keys::d));
        waitUntil([&] { return g_main_context_iteration(nullptr, FALSE) == TRUE && !pressed.empty(); }, quietTime);
        return pressed.size();
    }

    std::unique_ptr<HyprlandDesk> session;
    std::optional<hyprland::HyprlandSocket> commands;
    std::unique_ptr<HyprlandHotKeyBinder> binder;
    std::vector<backend::KeyCombination> pressed;
};

TEST_F(HyprlandBinder, bound_pressed_isToldInEveryLayout) {
    start();
    ASSERT_TRUE(bind());
    EXPECT_EQ(press(), 1U);
    EXPECT_EQ(pressed.back(), hyperD);
    session->person().type(controlOptionCommand(keys::d));
    EXPECT_EQ(press(), 1U) << "another chord is not";
}

TEST_F(HyprlandBinder, boundByThePerson_isRefused) {
    start("hl.bind(\"CTRL + ALT + SHIFT + SUPER + D\", hl.dsp.event(\"person\"))\n");
    // A busy compositor may not answer in time.
    EXPECT_TRUE(waitUntil([this] { return binder->bind(hyperD) == eventHotKeyExistsErr; }));
    EXPECT_EQ(press(), 0U);
}

TEST_F(HyprlandBinder, unboundOrEnded_isFree) {
    start();
    ASSERT_TRUE(bind());
    binder->unbind(hyperD);
    EXPECT_EQ(press(), 0U);
    ASSERT_TRUE(bind());
    binder.reset();
    EXPECT_EQ(session->hyprland().ask("j/binds").find("\"keycode\": 40"), std::string::npos);
}

TEST_F(HyprlandBinder, leftBehind_isTakenOver) {
    start();
    // By an agent that was killed.
    session->hyprland().evaluate(
        hyprland::bindCommand(hyprland::Language::lua, hyperD, dPlace).substr(std::string_view("/eval ").size()));
    ASSERT_TRUE(bind());
    EXPECT_EQ(press(), 1U);
}

TEST_F(HyprlandBinder, reload_comesBack) {
    start();
    ASSERT_TRUE(bind());
    session->hyprland().reload();
    EXPECT_TRUE(waitUntil([&] { return press() == 1; }));
    session->hyprland().configure("hl.bind(\"CTRL + ALT + SHIFT + SUPER + D\", hl.dsp.event(\"person\"))\n");
    EXPECT_TRUE(waitUntil([&] { return press() == 0; })) << "unless the person has taken the chord";
}

}  // namespace
}  // namespace vantrel::desk
