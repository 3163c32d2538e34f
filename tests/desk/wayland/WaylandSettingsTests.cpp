// The settings window in Wayland sessions whose compositor binds keys.
#include <gtest/gtest.h>

#include <functional>
#include <nlohmann/json.hpp>

#include "tests/desk/status/ItemProcess.hpp"
#include "tests/desk/status/PanelItem.hpp"
#include "tests/desk/status/TestPanel.hpp"
#include "tests/desk/support/ProcessActivity.hpp"
#include "tests/desk/support/SessionBus.hpp"
#include "tests/desk/wayland/support/WaylandDesk.hpp"
#ifdef VANTREL_SWAY
#include "tests/desk/wayland/support/SwayDesk.hpp"
#endif
#ifdef VANTREL_HYPRLAND
#include "tests/desk/wayland/support/HyprlandDesk.hpp"
#endif

#ifdef VANTREL_KWIN
#include "tests/desk/wayland/support/KwinDesk.hpp"
#endif

namespace vantrel::desk {
namespace {

/// A kind of session, and what only its compositor knows.
struct Session {
    std::string name;
    std::function<std::unique_ptr<WaylandDesk>()> start;
    /// The name of the window that has the keyboard; empty for none.
    std::function<std::string(WaylandDesk& desk)> focusedWindow;
    std::function<void(WaylandDesk& desk)> goToAnotherWorkspace;
};

#ifdef VANTREL_SWAY
std::string focusedWindow(const nlohmann::json& tree) {
    if (tree.value("focused", false)) {
        return tree["name"].is_string() && tree.contains("pid") ? tree["name"].get<std::string>() : "";
    }
    for (const char* const children : {"nodes", "floating_nodes"}) {
        for (const auto& child : tree.value(children, nlohmann::json::array())) {
            if (auto name = focusedWindow(child); !name.empty()) {
                return name;
            }
        }
    }
    return "";
}

Session sway() {
    constexpr std::uint32_t getTree = 4;
    const auto control = [](WaylandDesk& desk) -> SwayControl& { return static_cast<SwayDesk&>(desk).control(); };
    return {.name = "sway",
            .start = [] { return std::make_unique<SwayDesk>(); },
            .focusedWindow =
                [=](WaylandDesk& desk) { return focusedWindow(nlohmann::json::parse(control(desk).ask(getTree))); },
            .goToAnotherWorkspace = [=](WaylandDesk& desk) { control(desk).run("workspace 9"); }};
}
#endif

#ifdef VANTREL_HYPRLAND
Session hyprland() {
    const auto process = [](WaylandDesk& desk) -> HyprlandProcess& {
        return static_cast<HyprlandDesk&>(desk).hyprland();
    };
    return {
        .name = "hyprland",
        .start = [] { return std::make_unique<HyprlandDesk>(); },
        .focusedWindow =
            [=](WaylandDesk& desk) {
                return nlohmann::json::parse(process(desk).ask("j/activewindow"), nullptr, false).value("title", "");
            },
        .goToAnotherWorkspace =
            [=](WaylandDesk& desk) { process(desk).evaluate("hl.dispatch(hl.dsp.focus({ workspace = 9 }))"); }};
}
#endif

#ifdef VANTREL_KWIN
Session kwin() {
    const auto process = [](WaylandDesk& desk) -> KwinProcess& { return static_cast<KwinDesk&>(desk).kwin(); };
    return {.name = "kwin",
            .start = [] { return std::make_unique<KwinDesk>(); },
            .focusedWindow =
                [=](WaylandDesk& desk) {
                    // The names of KWin 6, and of 5.
                    return process(desk).evaluate(
                        "((workspace.activeWindow || workspace.activeClient) || {caption: ''}).caption");
                },
            .goToAnotherWorkspace =
                [=](WaylandDesk& desk) {
                    process(desk).call("/VirtualDesktopManager", "org.kde.KWin.VirtualDesktopManager.createDesktop",
                                       {"1", "Two"});
                    process(desk).call("/KWin", "org.kde.KWin.setCurrentDesktop", {"2"});
                }};
}
#endif

std::vector<Session> sessions() {
    std::vector<Session> found;
#ifdef VANTREL_SWAY
    found.push_back(sway());
#endif
#ifdef VANTREL_HYPRLAND
    found.push_back(hyprland());
#endif
#ifdef VANTREL_KWIN
    found.push_back(kwin());
#endif
    return found;
}

class WaylandSettings : public testing::TestWithParam<Session> {
  protected:
    WaylandSettings() {
        desk.environment().set("DBUS_SESSION_BUS_ADDRESS", busAddress());
        agent = desk.startAgent();
        if (!panel.waitForRegistrations(1)) {
            throw std::runtime_error("the agent's item does not register");
        }
        item = std::make_unique<PanelItem>(panel.bus(), panel.items().back());
    }

    /// The compositor's, where it serves one.
    [[nodiscard]] std::string busAddress() const {
        const std::string address = desk.compositor().busAddress();
        return address.starts_with("disabled") ? bus.address() : address;
    }

    void openSettings() {
        ASSERT_TRUE(waitOnBus([this] { return item->rows().size() == 16; }));
        item->click(settingsRow);
        ASSERT_TRUE(waitUntil([this] { return hasKeyboard(); })) << agent->standardError();
        program = helperOf(agent->processId(), "vantrel-settings");
        ASSERT_TRUE(program);
    }

    bool hasKeyboard() { return GetParam().focusedWindow(desk) == "Vantrel Settings"; }

    /// Presses the recorder's button, which has the focus, and waits until all that comes of it is done.
    void startRecording() {
        desk.person().type({keys::enter});
        ASSERT_TRUE(waitUntilAtRest(*program));
    }

    /// Closes the window, once its program has taken in what was recorded: until then it swallows keys.
    void close() {
        ASSERT_TRUE(waitUntilAtRest(*program));
        desk.person().type({keys::escape});
        ASSERT_TRUE(waitUntil([this] { return !hasKeyboard(); }));
    }

    bool waitForShortcut(const std::string& shortcut) {
        return waitOnBus([&] { return item->rows().at(11).label == "Shortcut: " + shortcut; });
    }

    std::unique_ptr<WaylandDesk> session = GetParam().start();
    WaylandDesk& desk = *session;
    SessionBus bus;
    TestPanel panel{busAddress()};
    std::unique_ptr<AgentProcess> agent;
    std::unique_ptr<PanelItem> item;
    std::optional<pid_t> program;
};

INSTANTIATE_TEST_SUITE_P(Sessions, WaylandSettings, testing::ValuesIn(sessions()),
                         [](const auto& test) { return test.param.name; });

TEST_P(WaylandSettings, chord_recorded_isTheHotKeyFromThenOn) {
    openSettings();
    startRecording();
    desk.person().type({keys::control, keys::option, keys::space});
    EXPECT_TRUE(waitForShortcut("Ctrl + Option + Space"));
    close();
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump({keys::control, keys::option, keys::space}, centreOfSecond));
}

TEST_P(WaylandSettings, ownHotKey_typedIntoTheRecorder_isRecordedAndNotCarriedOut) {
    desk.person().moveTo(onMain);
    openSettings();
    startRecording();
    desk.person().type({keys::control, keys::option, keys::space});
    ASSERT_TRUE(waitForShortcut("Ctrl + Option + Space"));
    ASSERT_TRUE(item->waitForLabel("Shortcut saved"));
    ASSERT_TRUE(item->waitForLabel("Vantrel"));
    startRecording();
    desk.person().type({keys::control, keys::option, keys::space});
    EXPECT_TRUE(item->waitForLabel("Shortcut saved"));
    close();
    EXPECT_TRUE(desk.person().waitFor(onMain))
        << "the chord was carried out while it was recorded: " << desk.person().pointer().value_or(LayoutPoint{});
}

TEST_P(WaylandSettings, openedAgainBehindAnotherWindow_getsTheKeyboard) {
    openSettings();
    GetParam().goToAnotherWorkspace(desk);
    ASSERT_TRUE(waitUntil([this] { return !hasKeyboard(); }));
    // Until its program knows, too.
    ASSERT_TRUE(waitUntilAtRest(*program));
    openSettings();
}

TEST_P(WaylandSettings, closedWhileRecording_compositorsShortcutsAreBack) {
    openSettings();
    startRecording();
    desk.person().type({keys::escape});
    close();
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
}

}  // namespace
}  // namespace vantrel::desk
