#include "tests/desk/wayland/support/GnomeProcess.hpp"

#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <utility>

namespace vantrel::desk {

namespace {

/// Who runs the buses: whoever runs the compositor.
std::optional<uid_t> otherThanRoot(uid_t user) {
    return geteuid() == user ? std::nullopt : std::optional(user);
}

std::string listOf(const std::vector<std::string>& items) {
    std::string list;
    for (const std::string& item : items) {
        list += list.empty() ? "" : ", ";
        list += item;
    }
    return "[" + list + "]";
}

std::string quoted(const std::string& text) {
    return "'" + text + "'";
}

/// A service that the shell asks about its session. Nobody else does here.
std::unique_ptr<ChildProcess> startLoginService(const SessionBus& bus, std::optional<uid_t> user) {
    ChildProcessOptions options;
    options.arguments = {"python3", "-m", "dbusmock", "--system", "--template", "logind"};
    options.environment.set("DBUS_SYSTEM_BUS_ADDRESS", bus.address());
    options.user = user;
    auto service = std::make_unique<ChildProcess>(options);
    BusClient client(bus.address());
    const auto call = [&](const char* method, GVariant* arguments) {
        return client.call("org.freedesktop.login1", "/org/freedesktop/login1", "org.freedesktop.DBus.Mock", method,
                           arguments) != nullptr;
    };
    const auto number = static_cast<gint32>(user.value_or(geteuid()));
    if (!waitUntil([&] { return call("AddSeat", g_variant_new("(s)", "seat0")); }) ||
        !call("AddUser", g_variant_new("(isb)", number, "person", TRUE)) ||
        !call("AddSession", g_variant_new("(ssisb)", "c1", "seat0", number, "person", TRUE))) {
        throw std::runtime_error("no stand-in for the login service (python3-dbusmock) could be started");
    }
    return service;
}

}  // namespace

GnomeProcess::GnomeProcess(const GnomeOptions& options)
    : CompositorProcess("gnome"),
      bus_(otherThanRoot(user())),
      systemBus_(otherThanRoot(user())),
      loginService_(startLoginService(systemBus_, otherThanRoot(user()))),
      client_(std::make_unique<BusClient>(bus_.address())),
      outputs_(options.outputs) {
    configure(options);
    run();
}

void GnomeProcess::configure(const GnomeOptions& options) const {
    const auto extensions = runtimeDirectory() / ".local" / "share" / "gnome-shell" / "extensions";
    std::filesystem::create_directories(extensions);
    const auto install = [&](const std::filesystem::path& folder) {
        std::filesystem::copy(folder, extensions / folder.filename(), std::filesystem::copy_options::recursive);
    };
    install(VANTREL_WITNESS);
    if (options.hasExtension) {
        install(VANTREL_EXTENSION);
    }
    if (options.extensionIsOfAnotherVersion) {
        runProgram({"sed", "-i", "s/const VERSION = 1;/const VERSION = 2;/",
                    extensions / "vantrel@vantrel.org" / "agentService.js"},
                   Environment::minimal());
    }
    std::vector<std::string> sources;
    for (const std::string& layout : options.keyboardLayouts) {
        sources.push_back("('xkb', '" + layout + "')");
    }
    std::vector<std::string> keyboardOptions;
    std::transform(options.keyboardOptions.begin(), options.keyboardOptions.end(), std::back_inserter(keyboardOptions),
                   quoted);
    std::vector<std::string> enabled{quoted("witness@vantrel.org")};
    if (options.extensionIsOn) {
        enabled.push_back(quoted("vantrel@vantrel.org"));
    }
    for (const std::filesystem::path& folder : options.furtherExtensions) {
        install(folder);
        enabled.push_back(quoted(folder.filename()));
    }
    const auto settings = runtimeDirectory() / ".config" / "glib-2.0" / "settings";
    std::filesystem::create_directories(settings);
    std::ofstream(settings / "keyfile")
        << "[org/gnome/shell]\nenabled-extensions=" << listOf(enabled)
        << "\nwelcome-dialog-last-shown-version='1000'\n[org/gnome/desktop/interface]\nenable-animations=false\n"
        << "[org/gnome/desktop/input-sources]\nsources=" << listOf(sources)
        << "\nxkb-options=" << (keyboardOptions.empty() ? "@as []" : listOf(keyboardOptions))
        << "\n[org/gnome/mutter]\nexperimental-features="
        << (options.layoutIsInPixels ? "@as []" : "['scale-monitor-framebuffer']") << '\n';
}

void GnomeProcess::run() {
    std::vector<std::string> arguments{"gnome-shell", "--headless", "--no-x11",
                                       "--wayland-display=wayland-vantrel-test"};
    for (const PrivateOutput& output : outputs_) {
        arguments.insert(arguments.end(), {"--virtual-monitor", output.mode});
    }
    start(std::move(arguments), 0,
          {{"DBUS_SESSION_BUS_ADDRESS", bus_.address()},
           {"DBUS_SYSTEM_BUS_ADDRESS", systemBus_.address()},
           {"GSETTINGS_BACKEND", "keyfile"},
           {"XDG_SESSION_TYPE", "wayland"},
           {"XDG_CURRENT_DESKTOP", "GNOME"},
           {"XDG_SESSION_DESKTOP", "gnome"},
           {"XDG_SESSION_CLASS", "user"},
           {"XDG_SESSION_ID", "c1"},
           {"GIO_USE_VFS", "local"},
           {"NO_AT_BRIDGE", "1"},
           {"LIBGL_ALWAYS_SOFTWARE", "1"}});
    const bool isUp = waitUntil([this] {
        return client_->call("org.vantrel.Witness", "/org/vantrel/Witness", "org.freedesktop.DBus.Peer", "Ping",
                             nullptr) != nullptr;
    });
    // It begins with an overview of the windows.
    if (!isUp || !waitUntil([this] { return evaluate("!Main.layoutManager._startingUp") == "true"; })) {
        throw std::runtime_error("the private GNOME Shell does not get ready");
    }
    arrange(outputs_);
    // The pointer may come to stand in a corner that opens it, too.
    static_cast<void>(evaluate("witness.moveTo(...witness.centreOf(Main.layoutManager.primaryMonitor))"));
    if (!waitUntil([this] {
            static_cast<void>(evaluate("Main.overview.hide()"));
            return evaluate("Main.overview.visible") == "false";
        })) {
        throw std::runtime_error("the private GNOME Shell does not leave its overview");
    }
}

void GnomeProcess::arrange(const std::vector<PrivateOutput>& outputs) const {
    // Again where its displays have changed since it told of them.
    if (!waitUntil([&] { return comesToArrange(outputs); })) {
        throw std::runtime_error("GNOME Shell does not arrange its displays so");
    }
}

bool GnomeProcess::comesToArrange(const std::vector<PrivateOutput>& outputs) const {
    constexpr const char* service = "org.gnome.Mutter.DisplayConfig";
    constexpr const char* path = "/org/gnome/Mutter/DisplayConfig";
    const auto state = client_->call(service, path, service, "GetCurrentState", nullptr);
    if (!state) {
        throw std::runtime_error("GNOME Shell does not tell of its displays");
    }
    guint32 serial = 0;
    g_variant_get_child(state.get(), 0, "u", &serial);
    int cornerX = 0;
    int cornerY = 0;
    for (const PrivateOutput& output : outputs) {
        cornerX = std::min(cornerX, output.x);
        cornerY = std::min(cornerY, output.y);
    }
    GVariantBuilder displays;
    g_variant_builder_init(&displays, G_VARIANT_TYPE("a(iiduba(ssa{sv}))"));
    const GVariantPointer monitors(g_variant_get_child_value(state.get(), 1));
    for (std::size_t number = 0; number < outputs.size(); ++number) {
        const std::string connector = "Meta-" + std::to_string(number);
        std::string mode;
        for (gsize index = 0; index < g_variant_n_children(monitors.get()); ++index) {
            const GVariantPointer monitor(g_variant_get_child_value(monitors.get(), index));
            const GVariantPointer identity(g_variant_get_child_value(monitor.get(), 0));
            const char* name = nullptr;
            g_variant_get_child(identity.get(), 0, "&s", &name);
            if (name == connector) {
                const GVariantPointer modes(g_variant_get_child_value(monitor.get(), 1));
                const GVariantPointer first(g_variant_get_child_value(modes.get(), 0));
                const char* modeName = nullptr;
                g_variant_get_child(first.get(), 0, "&s", &modeName);
                mode = modeName;
            }
        }
        GVariantBuilder shown;
        g_variant_builder_init(&shown, G_VARIANT_TYPE("a(ssa{sv})"));
        g_variant_builder_add(&shown, "(ssa{sv})", connector.c_str(), mode.c_str(), nullptr);
        const PrivateOutput& output = outputs[number];
        g_variant_builder_add(&displays, "(iiduba(ssa{sv}))", output.x - cornerX, output.y - cornerY,
                              std::stod(output.scale), static_cast<guint32>(output.transformNumber()),
                              static_cast<gboolean>(number == 0), &shown);
    }
    constexpr guint32 forThisSession = 1;
    return client_->call(service, path, service, "ApplyMonitorsConfig",
                         g_variant_new("(uua(iiduba(ssa{sv}))a{sv})", serial, forThisSession, &displays, nullptr)) !=
           nullptr;
}

std::string GnomeProcess::evaluate(const std::string& expression) const {
    const auto answer = client_->call("org.vantrel.Witness", "/org/vantrel/Witness", "org.vantrel.Witness1", "Evaluate",
                                      g_variant_new("(s)", expression.c_str()));
    if (!answer) {
        throw std::runtime_error("GNOME Shell does not evaluate " + expression);
    }
    const char* value = nullptr;
    g_variant_get(answer.get(), "(&s)", &value);
    return value;
}

void GnomeProcess::switchExtension(bool isOn) const {
    if (!client_->call("org.gnome.Shell", "/org/gnome/Shell", "org.gnome.Shell.Extensions",
                       isOn ? "EnableExtension" : "DisableExtension", g_variant_new("(s)", "vantrel@vantrel.org"))) {
        throw std::runtime_error("GNOME Shell does not switch its extension");
    }
}

bool GnomeProcess::hasExtension() const {
    return client_->property("org.vantrel.Shell", "/org/vantrel/Shell", "org.vantrel.Shell1", "Version") != nullptr;
}

}  // namespace vantrel::desk
