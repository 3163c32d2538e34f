#include "Vantrel/Backends/Plasma/PointerScript.hpp"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <string>
#include <utility>

#include "Vantrel/Handles/LoopSource.hpp"

namespace vantrel::plasma {

namespace {

constexpr const char* service = "org.kde.KWin";
constexpr const char* scriptingPath = "/Scripting";
constexpr const char* scriptingInterface = "org.kde.kwin.Scripting";
constexpr const char* scriptInterface = "org.kde.kwin.Script";
constexpr const char* objectPath = "/org/vantrel/Pointer";
constexpr const char* interface = "org.vantrel.Pointer";
constexpr const char* name = "vantrel-pointer";

/// A script's file; it goes with this object.
class ScriptFile {
  public:
    explicit ScriptFile(const std::string& text) {
        const char* const directory = std::getenv("XDG_RUNTIME_DIR");
        if (directory == nullptr) {
            return;
        }
        path_ = std::string(directory) + "/" + name + "-" + std::to_string(getpid()) + ".js";
        if (!g_file_set_contents(path_.c_str(), text.data(), static_cast<gssize>(text.size()), nullptr)) {
            path_.clear();
        }
    }
    ~ScriptFile() {
        if (!path_.empty()) {
            unlink(path_.c_str());
        }
    }
    ScriptFile(const ScriptFile&) = delete;
    ScriptFile& operator=(const ScriptFile&) = delete;

    /// Empty where it could not be written.
    [[nodiscard]] const std::string& path() const { return path_; }

  private:
    std::string path_;
};

struct Answer {
    unsigned question;
    wayland::LayoutPoint place;
};

/// As one text ("7 640.5 200"): of several numbers KWin would send the whole ones as another type.
std::optional<Answer> parse(const char* text) {
    Answer answer{};
    gchar* rest = nullptr;
    answer.question = static_cast<unsigned>(g_ascii_strtoull(text, &rest, 10));
    if (*rest != ' ') {
        return std::nullopt;
    }
    answer.place.x = g_ascii_strtod(rest, &rest);
    if (*rest != ' ') {
        return std::nullopt;
    }
    answer.place.y = g_ascii_strtod(rest, &rest);
    return *rest == '\0' ? std::optional(answer) : std::nullopt;
}

/// An object on the bus that takes the answer to one question. Calls wait in a context of its own and go with it, so
/// nobody can have them pile up.
class Listener {
  public:
    Listener(GDBusConnection* bus, unsigned question) : bus_(bus), question_(question), context_(g_main_context_new()) {
        static constexpr GDBusInterfaceVTable handlers{
            .method_call = &Listener::called, .get_property = nullptr, .set_property = nullptr, .padding = {}};
        GDBusNodeInfo* const node = g_dbus_node_info_new_for_xml(
            "<node><interface name='org.vantrel.Pointer'>"
            "<method name='Tell'><arg type='s' direction='in'/></method>"
            "</interface></node>",
            nullptr);
        g_main_context_push_thread_default(context_.get());
        object_ =
            g_dbus_connection_register_object(bus_, objectPath, node->interfaces[0], &handlers, this, nullptr, nullptr);
        g_main_context_pop_thread_default(context_.get());
        g_dbus_node_info_unref(node);
    }
    ~Listener() { g_dbus_connection_unregister_object(bus_, object_); }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    std::optional<wayland::LayoutPoint> waitUntil(Clock::time_point deadline) {
        const auto left = std::chrono::duration_cast<std::chrono::microseconds>(deadline - Clock::now());
        const LoopSource wakeAtDeadline =
            LoopSource::after(std::max(left, std::chrono::microseconds(0)), [] {}, {.context = context_.get()});
        while (!told_ && Clock::now() < deadline) {
            g_main_context_iteration(context_.get(), TRUE);
        }
        return told_;
    }

  private:
    static void called(GDBusConnection* /*bus*/, const char* /*sender*/, const char* /*path*/,
                       const char* /*interface*/, const char* /*method*/, GVariant* arguments,
                       GDBusMethodInvocation* invocation, gpointer data) {
        const char* text = nullptr;
        g_variant_get(arguments, "(&s)", &text);
        auto& self = *static_cast<Listener*>(data);
        // The answer to an earlier question may have come too late for it.
        if (const auto answer = parse(text); answer && answer->question == self.question_) {
            self.told_ = answer->place;
        }
        g_dbus_method_invocation_return_value(invocation, nullptr);
    }

    GDBusConnection* bus_;
    unsigned question_;
    GMainContextPointer context_;
    guint object_ = 0;
    std::optional<wayland::LayoutPoint> told_;
};

}  // namespace

bool PointerScript::run(const std::string& file, Clock::time_point deadline) {
    const auto loaded =
        backend::callUntil(deadline, bus_.get(), {service, scriptingPath, scriptingInterface, "loadScript"},
                           g_variant_new("(ss)", file.c_str(), name), "(i)");
    gint32 number = -1;
    if (loaded) {
        g_variant_get(loaded.get(), "(i)", &number);
    }
    // KWin 5.27 names it without the folder.
    for (const char* const folder : {"/Scripting/Script", "/"}) {
        const std::string path = folder + std::to_string(number);
        if (number >= 0 &&
            backend::callUntil(deadline, bus_.get(), {service, path.c_str(), scriptInterface, "run"}, nullptr, "()")) {
            return true;
        }
    }
    return false;
}

std::optional<wayland::LayoutPoint> PointerScript::ask(Clock::time_point deadline) {
    Listener listener(bus_.get(), ++questions_);
    const ScriptFile file(std::string("callDBus(\"") + g_dbus_connection_get_unique_name(bus_.get()) + "\", \"" +
                          objectPath + "\", \"" + interface + "\", \"Tell\", \"" + std::to_string(questions_) +
                          " \" + workspace.cursorPos.x + \" \" + workspace.cursorPos.y);\n");
    if (file.path().empty()) {
        return std::nullopt;
    }
    const auto place = run(file.path(), deadline) ? listener.waitUntil(deadline) : std::nullopt;
    g_dbus_connection_call(bus_.get(), service, scriptingPath, scriptingInterface, "unloadScript",
                           g_variant_new("(s)", name), nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr, nullptr,
                           nullptr);
    return place;
}

}  // namespace vantrel::plasma
