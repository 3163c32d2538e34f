#include "tests/soak/HangTrial.hpp"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/desk/faults/PanelProcess.hpp"
#include "tests/desk/sound/SoundServer.hpp"
#include "tests/desk/status/ItemProcess.hpp"
#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/ProcessActivity.hpp"
#include "tests/soak/Typist.hpp"

namespace vantrel::soak {

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;
using desk::MainPoint;

constexpr MainPoint onMain{.x = 700, .y = 500};
constexpr double mostMilliseconds = 100;
constexpr int jumpsASave = 10;
constexpr std::size_t flood = 10000;

/// A desk with everything that can hang.
class HangDesk {
  public:
    HangDesk() {
        // No hardware of this machine is to make a sound.
        desk_.environment().set("ALSA_CONFIG_PATH", "/dev/null");
        sound_ = std::make_unique<desk::SoundServer>(desk_.environment(), desk_.home().path() / "sound");
        desk_.defaults().writeInteger("soundEnabled", 1);
        panel_ = std::make_unique<desk::PanelProcess>(desk_.bus().address(), desk_.environment());
        agent_ = desk_.startAgent();
        if (!panel_->waitForItems(1)) {
            throw std::runtime_error("the panel gets no item");
        }
    }

    /// Jumps there and back. Now and then a point is saved, which changes the menu and shows a message.
    void measure(const char* what, int jumps) {
        std::vector<double> times;
        for (int jump = 0; jump < jumps; ++jump) {
            if (jump % jumpsASave == 0) {
                typist_.type(desk::hyper(desk::keys::s));
            }
            desk_.pointer().moveTo({onMain.x + jump % 100, onMain.y});
            const MainPoint departure = desk_.pointer().position();
            const auto start = Clock::now();
            typist_.type(desk::hyper(desk::keys::d));
            if (!desk_.pointer().catchDeparture(departure)) {
                throw std::runtime_error(std::string("a jump is lost: ") + what);
            }
            times.push_back(Milliseconds(Clock::now() - start).count());
        }
        std::sort(times.begin(), times.end());
        const double median = times[times.size() / 2];
        const double tail = times[times.size() * 99 / 100];
        std::printf("    %-28s p50 %6.2f ms   p99 %6.2f ms   longest %6.2f ms   0 of %d lost\n", what, median, tail,
                    times.back(), jumps);
        std::fflush(stdout);
        if (tail > mostMilliseconds) {
            throw std::runtime_error(std::string("jumps are held up: ") + what);
        }
    }

    /// Hands the URLs to the agent by a further start, as a browser does.
    void openURLs(const std::vector<std::string>& urls) {
        if (desk_.startProgram(urls)->waitForExit() != desk::ExitStatus{.code = 0, .signal = std::nullopt}) {
            throw std::runtime_error("the agent takes no URLs");
        }
    }

    desk::Desk& desk() { return desk_; }
    desk::PanelProcess& panel() { return *panel_; }
    desk::SoundServer& sound() { return *sound_; }

    /// The program that draws messages; comes with the first one.
    pid_t overlay() {
        typist_.type(desk::hyper(desk::keys::s));
        std::optional<pid_t> overlay;
        desk::waitUntil([&] { return (overlay = desk::overlayOf(agent_->processId())).has_value(); });
        if (!overlay) {
            throw std::runtime_error("no program draws messages");
        }
        return *overlay;
    }

  private:
    desk::Desk desk_{{.hasSessionBus = true, .hasWindowManager = true}};
    Typist typist_{desk_.connection(), desk_.keyboard()};
    std::unique_ptr<desk::SoundServer> sound_;
    std::unique_ptr<desk::PanelProcess> panel_;
    std::unique_ptr<desk::AgentProcess> agent_;
};

}  // namespace

void runHangTrial(int jumps) {
    HangDesk desk;
    desk.measure("nothing hangs", jumps);
    desk.panel().stop();
    desk.measure("the panel hangs", jumps);
    desk.panel().goOn();
    desk.sound().stop();
    desk.measure("the sound server hangs", jumps);
    desk.sound().goOn();
    // Not while it has grabbed the X server, which stops everybody.
    desk::waitUntilAtRest(desk.desk().windowManager().processId());
    desk.desk().windowManager().sendSignal(SIGSTOP);
    desk.measure("the window manager hangs", jumps);
    desk.desk().windowManager().sendSignal(SIGCONT);
    desk.desk().bus().freeze();
    desk.measure("the session bus hangs", jumps);
    desk.desk().bus().thaw();
    const pid_t overlay = desk.overlay();
    kill(overlay, SIGSTOP);
    desk.measure("the message window hangs", jumps);
    kill(overlay, SIGCONT);
    desk.measure("nothing hangs any more", jumps);
    desk.openURLs(std::vector<std::string>(flood, "vantrel:save-point"));
    desk.measure("10,000 URLs save points", jumps);
}

}  // namespace vantrel::soak
