#include "tests/desk/support/Desk.hpp"

#include <signal.h>

#include <chrono>
#include <stdexcept>
#include <string>

#include "tests/desk/support/KeyGrab.hpp"

namespace vantrel::desk {

namespace {

/// Whether the window manager takes a window into its care. One that asks to be shown while openbox starts is sometimes
/// forgotten, so each question is a new window's.
bool managesWindows(XConnection& connection) {
    const std::string name = "WM_STATE";
    const XReply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        connection.get(), xcb_intern_atom(connection.get(), 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    const xcb_window_t window = xcb_generate_id(connection.get());
    xcb_create_window(connection.get(), XCB_COPY_FROM_PARENT, window, connection.root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_map_window(connection.get(), window);
    const bool isManaged = waitUntil(
        [&] {
            const XReply<xcb_get_property_reply_t> state(xcb_get_property_reply(
                connection.get(),
                xcb_get_property(connection.get(), 0, window, atom->atom, XCB_GET_PROPERTY_TYPE_ANY, 0, 1), nullptr));
            return state && state->length == 1;
        },
        std::chrono::milliseconds(100));
    xcb_destroy_window(connection.get(), window);
    connection.synchronise();
    return isManaged;
}

std::unique_ptr<ChildProcess> startWindowManager(XConnection& connection, const Environment& environment) {
    ChildProcessOptions options;
    options.arguments = {"openbox"};
    options.environment = environment;
    auto process = std::make_unique<ChildProcess>(options);
    if (!waitUntil([&] { return managesWindows(connection); })) {
        throw std::runtime_error("the window manager (openbox) does not come up");
    }
    return process;
}

}  // namespace

Desk::Desk(const DeskOptions& options)
    : connection_(server_.displayName()),
      layout_(server_.displayName()),
      keyboard_(connection_),
      pointer_(connection_, layout_),
      environment_(Environment::minimal()) {
    home_.enter(environment_);
    environment_.set("DISPLAY", server_.displayName());
    setKeyboardMap(server_.displayName(), "us");
    layout_.apply(DisplayLayout::twoDisplays());
    if (options.hasSessionBus) {
        bus_ = std::make_unique<SessionBus>();
        environment_.set("DBUS_SESSION_BUS_ADDRESS", bus_->address());
    } else {
        // Also keeps GLib from looking for a bus elsewhere or starting one.
        environment_.set("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    }
    if (options.hasWindowManager) {
        windowManager_ = startWindowManager(connection_, environment_);
    }
    defaults().writeText("animation", "none");
    defaults().writeInteger("soundEnabled", 0);
}

Desk::~Desk() = default;

std::unique_ptr<AgentProcess> Desk::startProgram(const std::vector<std::string>& arguments) {
    return std::make_unique<AgentProcess>(environment_, home_.path() / "stderr", arguments, agentWrapper_);
}

std::unique_ptr<AgentProcess> Desk::startAgent() {
    // The server may still be letting go of the hot keys of an agent that has ended, and they would be taken for those
    // of the new one.
    if (lastAgent_ != 0 && ::kill(lastAgent_, 0) != 0) {
        waitUntil([&] { return !isHeldByAnotherProgram(connection_, hyper(keys::s)); });
    }
    auto agent = startProgram();
    lastAgent_ = agent->processId();
    const bool isReady =
        waitUntil([&] { return !agent->isRunning() || isHeldByAnotherProgram(connection_, hyper(keys::s)); });
    if (!isReady || !agent->isRunning()) {
        throw std::runtime_error("the agent does not become ready: " + agent->standardError());
    }
    return agent;
}

bool Desk::waitForHotKey(const Chord& chord) {
    return waitUntil([&] { return isHeldByAnotherProgram(connection_, chord); });
}

void Desk::saveScreenshot(const std::filesystem::path& file) const {
    runProgram({"import", "-window", "root", file.native()}, environment_);
}

}  // namespace vantrel::desk
