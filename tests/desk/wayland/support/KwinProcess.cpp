#include "tests/desk/wayland/support/KwinProcess.hpp"

#include <linux/capability.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <optional>
#include <stdexcept>
#include <string_view>

#include "tests/desk/wayland/support/KwinDisplays.hpp"

namespace vantrel::desk {

namespace {

/// Who runs the bus: whoever runs the compositor.
std::optional<uid_t> otherThanRoot(uid_t user) {
    return geteuid() == user ? std::nullopt : std::optional(user);
}

std::string before(const std::string& text, char separator) {
    return text.substr(0, text.find(separator));
}

std::string after(const std::string& text, char separator) {
    return text.substr(text.find(separator) + 1);
}

bool isOfVersion5() {
    return std::string_view(VANTREL_KWIN_VERSION).starts_with("5.");
}

}  // namespace

KwinProcess::KwinProcess(const KwinOptions& options)
    : CompositorProcess("kwin"), bus_(otherThanRoot(user())), outputs_(options.outputs), mode_(outputs_.front().mode) {
    configure(options);
    if (checksPermissions()) {
        showPrograms();
    }
    // The packaged one has a capability, which a container may not be able to give.
    std::filesystem::copy_file(VANTREL_KWIN, runtimeDirectory() / "kwin_wayland");
    run();
}

void KwinProcess::run() {
    std::map<std::string, std::string> environment{{"DBUS_SESSION_BUS_ADDRESS", bus_.address()},
                                                   // As in a session of Plasma: it finds no desktop files without.
                                                   {"XDG_MENU_PREFIX", "plasma-"},
                                                   {"KWIN_COMPOSE", "Q"},
                                                   {"QT_LOGGING_RULES", "kwin_scripting.debug=true"},
                                                   {"LIBGL_ALWAYS_SOFTWARE", "1"}};
    if (!checksPermissions()) {
        // KWin's own switch; else it would refuse everybody.
        environment.emplace("KWIN_WAYLAND_NO_PERMISSION_CHECKS", "1");
    }
    start(
        {runtimeDirectory() / "kwin_wayland", "--virtual", "--width", before(mode_, 'x'), "--height", after(mode_, 'x'),
         "--output-count", std::to_string(outputs_.size()), "--socket", "wayland-vantrel-test", "--no-lockscreen"},
        0, environment);
    arrange(outputs_);
}

void KwinProcess::restart() {
    crash();
    run();
}

bool KwinProcess::checksPermissions() {
    return geteuid() != 0 || prctl(PR_CAPBSET_READ, CAP_SYS_PTRACE) == 1;
}

bool KwinProcess::keepsWholePoints() {
    return isOfVersion5();
}

void KwinProcess::configure(const KwinOptions& options) const {
    std::filesystem::create_directories(runtimeDirectory() / ".config");
    std::ofstream(runtimeDirectory() / ".config" / "kxkbrc")
        << "[Layout]\nUse=true\nLayoutList=" << options.keyboardLayouts << '\n';
    // What Plasma brings along: it knows only desktop files that are in its menu.
    std::filesystem::create_directories(runtimeDirectory() / ".config" / "menus");
    std::ofstream(runtimeDirectory() / ".config" / "menus" / "plasma-applications.menu")
        << "<Menu><Name>Applications</Name><DefaultAppDirs/><Include><All/></Include></Menu>\n";
    if (options.allowsPerson) {
        allow(std::filesystem::read_symlink("/proc/self/exe"));
    }
    if (options.allowsAgent) {
        allow(VANTREL_PROGRAM);
    }
}

void KwinProcess::allow(const std::filesystem::path& program) const {
    const auto directory = runtimeDirectory() / ".local" / "share" / "applications";
    std::filesystem::create_directories(directory);
    const auto draft = directory / (program.filename().native() + ".new");
    std::ofstream(draft) << "[Desktop Entry]\nType=Application\nName=" << program.filename().native()
                         << "\nNoDisplay=true\nExec=" << program.native()
                         << "\nX-KDE-Wayland-Interfaces=org_kde_kwin_fake_input\n";
    // It watches the directory, and must not see half a file.
    std::filesystem::rename(draft, directory / (program.filename().native() + ".desktop"));
}

void KwinProcess::arrange(const std::vector<PrivateOutput>& outputs) const {
    KwinDisplays(socket()).arrange(outputs, std::stoi(before(mode_, 'x')), std::stoi(after(mode_, 'x')));
}

void KwinProcess::show(const std::vector<std::pair<int, PrivateOutput>>& outputs) const {
    KwinDisplays::NumberedOutputs numbered;
    for (const auto& [number, output] : outputs) {
        numbered.emplace_back(static_cast<std::size_t>(number - 1), output);
    }
    KwinDisplays(socket()).show(numbered, std::stoi(before(mode_, 'x')), std::stoi(after(mode_, 'x')));
}

bool KwinProcess::switchOff(int number) const {
    return KwinDisplays(socket()).switchOff(static_cast<std::size_t>(number - 1));
}

std::string KwinProcess::call(const std::string& path, const std::string& method,
                              const std::vector<std::string>& arguments) const {
    ChildProcessOptions options;
    options.arguments = {"gdbus",         "call", "--session", "--dest", "org.kde.KWin",
                         "--object-path", path,   "--method",  method};
    options.arguments.insert(options.arguments.end(), arguments.begin(), arguments.end());
    options.environment.set("DBUS_SESSION_BUS_ADDRESS", bus_.address());
    const TemporaryDirectory directory("call");
    options.standardOutput = directory.path() / "answer";
    if (ChildProcess(options).waitForExit() != ordinaryEnd) {
        throw std::runtime_error("KWin does not answer " + method);
    }
    std::string answer;
    std::getline(std::ifstream(options.standardOutput), answer);
    return answer;
}

std::string KwinProcess::evaluate(const std::string& expression) {
    const std::string name = "test-" + std::to_string(++scripts_);
    const auto file = runtimeDirectory() / name;
    std::ofstream(file) << "print(\"" << name << " \" + (" << expression << "));\n";
    std::filesystem::permissions(file, std::filesystem::perms(0644));
    const std::string loaded = call("/Scripting", "org.kde.kwin.Scripting.loadScript", {file, name});
    const std::string number = loaded.substr(1, loaded.find(',') - 1);
    call((isOfVersion5() ? "/" : "/Scripting/Script") + number, "org.kde.kwin.Script.run", {});
    std::string line;
    waitUntil([&] {
        std::ifstream log(runtimeDirectory() / "log");
        while (std::getline(log, line)) {
            if (line.find(name + " ") != std::string::npos) {
                return true;
            }
        }
        return false;
    });
    call("/Scripting", "org.kde.kwin.Scripting.unloadScript", {name});
    return line.substr(std::min(line.find(name) + name.size() + 1, line.size()));
}

void KwinProcess::chooseLayout(unsigned number) const {
    const std::string answer = call("/Layouts", "org.kde.KeyboardLayouts.setLayout", {std::to_string(number)});
    if (answer != "(true,)") {
        throw std::runtime_error("KWin does not choose layout " + std::to_string(number) + ": " + answer);
    }
}

}  // namespace vantrel::desk
