#include "benchmarks/support/Candidates.hpp"

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "tests/desk/support/KeyGrab.hpp"

namespace vantrel::bench {

namespace {

using desk::Desk;

std::string number(int value) {
    return std::to_string(value);
}

std::shared_ptr<void> waitUntilReady(Desk& desk, const std::string& name, std::shared_ptr<void> program) {
    const auto holdsKey = [&] {
        // With the server grabbed, the candidate cannot find its key taken in the moment of asking.
        xcb_grab_server(desk.connection().get());
        const std::uint16_t modifiers = desk::modifierMask(desk::hyper(desk::keys::d));
        const auto cookie =
            xcb_grab_key_checked(desk.connection().get(), 0, desk.connection().root(), modifiers,
                                 desk.keyboard().keycode(desk::keys::d), XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        const desk::XReply<xcb_generic_error_t> error{xcb_request_check(desk.connection().get(), cookie)};
        xcb_ungrab_key(desk.connection().get(), desk.keyboard().keycode(desk::keys::d), desk.connection().root(),
                       modifiers);
        xcb_ungrab_server(desk.connection().get());
        desk.connection().synchronise();
        return error != nullptr;
    };
    if (!desk::waitUntil(holdsKey)) {
        throw std::runtime_error("a candidate does not take its hot key: " + name);
    }
    return program;
}

std::shared_ptr<void> startFloor(Desk& desk, const Course& course) {
    const auto left = desk.layout().toRoot(course.left);
    desk::ChildProcessOptions options;
    options.arguments = {VANTREL_BENCH_FLOOR,
                         number(desk.keyboard().keycode(desk::keys::d)),
                         number(desk::modifierMask(desk::hyper(desk::keys::d))),
                         number(desk.layout().mainOrigin().x),
                         number(left.x),
                         number(left.y)};
    options.environment = desk.environment();
    return waitUntilReady(desk, options.arguments.front(), std::make_shared<desk::ChildProcess>(options));
}

void writeCourse(Desk& desk, const Course& course) {
    desk.defaults().writeData("rememberedPositions", course.rememberedPositions);
    desk.defaults().writeData("savedPoints", course.savedPoints);
}

std::shared_ptr<void> startVantrel(Desk& desk, const Course& course) {
    writeCourse(desk, course);
    return desk.startAgent();
}

std::shared_ptr<void> startOtherBuild(Desk& desk, const Course& course, const std::string& program) {
    writeCourse(desk, course);
    desk::ChildProcessOptions options;
    options.arguments = {program};
    options.environment = desk.environment();
    return waitUntilReady(desk, program, std::make_shared<desk::ChildProcess>(options));
}

/// What people write: a script that asks where the pointer is, keeps that in a file for its side, and moves the pointer
/// to where it last was on the other, run by a hot-key daemon.
std::shared_ptr<void> startDaemonWithScript(Desk& desk, const Course& course) {
    const auto left = desk.layout().toRoot(course.left);
    const std::filesystem::path home = desk.home().path();
    std::ofstream(home / "left") << left.x << ' ' << left.y << '\n';
    const std::filesystem::path script = home / "jump.sh";
    std::ofstream(script) << "#!/bin/sh\ncd " << home.native()
                          << "\neval \"$(xdotool getmouselocation --shell)\"\nif [ \"$X\" -lt "
                          << desk.layout().mainOrigin().x
                          << " ]; then here=left there=right; else here=right there=left; fi\n"
                             "echo \"$X $Y\" >$here\nread -r x y <$there\nxdotool mousemove \"$x\" \"$y\"\n";
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    const std::filesystem::path configuration = home / "sxhkdrc";
    std::ofstream(configuration) << "super + ctrl + alt + shift + d\n    " << script.native() << '\n';
    desk::ChildProcessOptions options;
    options.arguments = {"sxhkd", "-c", configuration.native()};
    desk.environment().set("SHELL", "/bin/sh");
    options.environment = desk.environment();
    return waitUntilReady(desk, options.arguments.front(), std::make_shared<desk::ChildProcess>(options));
}

}  // namespace

Candidate floorCandidate() {
    return {.name = "the floor: grab, ask, warp, in a few lines of C++",
            .start = &startFloor,
            .goesThroughAllDisplays = false,
            .slowness = 1};
}

Candidate vantrelCandidate() {
    return {.name = "Vantrel", .start = &startVantrel, .goesThroughAllDisplays = true, .slowness = 1};
}

Candidate otherBuildCandidate(const std::string& program) {
    return {.name = program,
            .start = [program](Desk& desk, const Course& course) { return startOtherBuild(desk, course, program); },
            .goesThroughAllDisplays = true,
            .slowness = 1};
}

Candidate daemonCandidate() {
    return {.name = "sxhkd with an xdotool script",
            .start = &startDaemonWithScript,
            .goesThroughAllDisplays = false,
            .slowness = 5};
}

std::vector<desk::MainPoint> stopsOf(const Candidate& candidate, const Course& course) {
    return candidate.goesThroughAllDisplays ? course.stops : std::vector{course.right, course.left};
}

}  // namespace vantrel::bench
