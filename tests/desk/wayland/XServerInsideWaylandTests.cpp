// An X server inside a Wayland session takes warps and moves nothing: it is refused in words.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "Vantrel/Backends/X11/X11Session.hpp"
#include "tests/desk/support/ChildProcess.hpp"
#include "tests/desk/support/TemporaryDirectory.hpp"
#include "tests/desk/support/Wait.hpp"

namespace vantrel::desk {
namespace {

/// A Wayland session without a screen (sway), with its X server for X programs.
class WaylandSession {
  public:
    WaylandSession() {
        const std::filesystem::path configuration = directory_.path() / "config";
        // The X server admits its own user only, and the compositor does not run as root: let everyone here in.
        std::ofstream(configuration) << "xwayland force\nexec xhost + && echo \"$DISPLAY\" > '"
                                     << displayFile().native() << "'\n";
        ChildProcessOptions options;
        options.arguments = {"sway", "-c", configuration.native()};
        if (geteuid() == 0) {
            constexpr uid_t nobody = 65534;
            EXPECT_EQ(chown(directory_.path().c_str(), nobody, nobody), 0);
            options.arguments.insert(options.arguments.begin(),
                                     {"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"});
        }
        options.environment.set("XDG_RUNTIME_DIR", directory_.path().native());
        options.environment.set("WLR_BACKENDS", "headless");
        options.environment.set("WLR_RENDERER", "pixman");
        options.environment.set("WLR_LIBINPUT_NO_DEVICES", "1");
        options.standardError = directory_.path() / "log";
        process_ = std::make_unique<ChildProcess>(options);
    }

    /// The name of its X display, once it is there; empty when it never comes.
    std::string displayName() {
        std::string name;
        waitUntil([&] {
            std::ifstream file(displayFile());
            return static_cast<bool>(std::getline(file, name)) && file.good();
        });
        return name;
    }

  private:
    [[nodiscard]] std::filesystem::path displayFile() const { return directory_.path() / "display"; }

    TemporaryDirectory directory_{"wayland"};
    std::unique_ptr<ChildProcess> process_;
};

TEST(WaylandSession, connect_xServerInsideWayland_isRefusedInOneLine) {
    WaylandSession session;
    const std::string display = session.displayName();
    ASSERT_NE(display, "");
    setenv("DISPLAY", display.c_str(), 1);
    std::string error;
    EXPECT_EQ(x11::X11Session::connect(error), nullptr);
    EXPECT_NE(error.find("Wayland"), std::string::npos) << error;
    EXPECT_EQ(error.find('\n'), std::string::npos);
}

TEST(WaylandSession, connect_noDisplay_isRefusedInOneLine) {
    unsetenv("DISPLAY");
    std::string error;
    EXPECT_EQ(x11::X11Session::connect(error), nullptr);
    EXPECT_NE(error.find("DISPLAY"), std::string::npos) << error;
    setenv("DISPLAY", ":4711", 1);
    EXPECT_EQ(x11::X11Session::connect(error), nullptr);
    EXPECT_NE(error.find(":4711"), std::string::npos) << error;
}

}  // namespace
}  // namespace vantrel::desk
