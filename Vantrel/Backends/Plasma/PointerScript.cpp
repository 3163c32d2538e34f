#include "Vantrel/Backends/Plasma/PointerScript.hpp"

#include <unistd.h>

#include <algorithm>
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

GDBusNodeInfo* description() {
    return g_dbus_node_info_new_for_xml(
        "<node><interface name='org.vantrel.Pointer'>"
        "<method name='Tell'><arg type='s' direction='in'/></method>"
        "</interface></node>",
        nullptr);
}

}  // namespace

struct PointerScript::Callbacks {
    static void called(GDBusConnection* /*bus*/, const char* /*sender*/, const char* /*path*/,
                       const char* /*interface*/, const char* /*method*/, GVariant* arguments,
                       GDBusMethodInvocation* invocation, gpointer data) {
        const char* text = nullptr;
        g_variant_get(arguments, "(&s)", &text);
        auto& self = *static_cast<PointerScript*>(data);
        // The answer to an earlier question may have come too late for it.
        if (auto answer = parse(text); answer && answer->question == self.questions_) {
            self.told_ = answer->place;
        }
        g_dbus_method_invocation_return_value(invocation, nullptr);
    }
};

PointerScript::PointerScript(GObjectPointer<GDBusConnection> bus)
    : bus_(std::move(bus)), answers_(g_main_context_new()) {
    static constexpr GDBusInterfaceVTable handlers{
        .method_call = &Callbacks::called, .get_property = nullptr, .set_property = nullptr, .padding = {}};
    GDBusNodeInfo* const node = description();
    g_main_context_push_thread_default(answers_.get());
    object_ = g_dbus_connection_register_object(bus_.get(), objectPath, node->interfaces[0], &handlers, this, nullptr,
                                                nullptr);
    g_main_context_pop_thread_default(answers_.get());
    g_dbus_node_info_unref(node);
}

PointerScript::~PointerScript() {
    if (object_ != 0) {
        g_dbus_connection_unregister_object(bus_.get(), object_);
    }
}

GVariantPointer PointerScript::call(const char* path, const char* methodInterface, const char* method,
                                    GVariant* arguments, Clock::time_point deadline) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    return GVariantPointer(g_dbus_connection_call_sync(
        bus_.get(), service, path, methodInterface, method, arguments, nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START,
        static_cast<int>(std::max<std::int64_t>(left, 1)), nullptr, nullptr));
}

std::optional<wayland::LayoutPoint> PointerScript::ask(Clock::time_point deadline) {
    const ScriptFile file(std::string("callDBus(\"") + g_dbus_connection_get_unique_name(bus_.get()) + "\", \"" +
                          objectPath + "\", \"" + interface + "\", \"Tell\", \"" + std::to_string(++questions_) +
                          " \" + workspace.cursorPos.x + \" \" + workspace.cursorPos.y);\n");
    const auto loaded = call(scriptingPath, scriptingInterface, "loadScript",
                             g_variant_new("(ss)", file.path().c_str(), name), deadline);
    if (!loaded || g_variant_is_of_type(loaded.get(), G_VARIANT_TYPE("(i)")) == FALSE) {
        return std::nullopt;
    }
    gint32 number = 0;
    g_variant_get(loaded.get(), "(i)", &number);
    told_.reset();
    // KWin 5.27 names it without the folder.
    if (!call(("/Scripting/Script" + std::to_string(number)).c_str(), scriptInterface, "run", nullptr, deadline)) {
        call(("/" + std::to_string(number)).c_str(), scriptInterface, "run", nullptr, deadline);
    }
    const auto left = std::chrono::duration_cast<std::chrono::microseconds>(deadline - Clock::now());
    const LoopSource wakeAtDeadline =
        LoopSource::after(std::max(left, std::chrono::microseconds(0)), [] {}, {.context = answers_.get()});
    while (!told_ && Clock::now() < deadline) {
        g_main_context_iteration(answers_.get(), TRUE);
    }
    g_dbus_connection_call(bus_.get(), service, scriptingPath, scriptingInterface, "unloadScript",
                           g_variant_new("(s)", name), nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr, nullptr,
                           nullptr);
    return told_;
}

}  // namespace vantrel::plasma
