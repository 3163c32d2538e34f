#include "Vantrel/Backends/X11/X11Platform.hpp"

#include <utility>

#include "Vantrel/Backends/X11/AgentSelection.hpp"
#include "Vantrel/Backends/X11/DeferredTask.hpp"
#include "Vantrel/Backends/X11/ScreenState.hpp"
#include "Vantrel/Backends/X11/X11Connection.hpp"
#include "Vantrel/Backends/X11/X11Displays.hpp"
#include "Vantrel/Backends/X11/X11EventSource.hpp"
#include "Vantrel/Backends/X11/X11HotKeys.hpp"
#include "Vantrel/Backends/X11/X11Pointer.hpp"

namespace vantrel::x11 {

namespace {

/// Reads a changed layout while nobody waits for it, so that the next press finds it ready.
class LayoutRefresh final : public X11EventListener {
  public:
    LayoutRefresh(X11Connection& connection, ScreenState& screen)
        : screen_(screen), task_([this] { screen_.synchronize(); }) {
        connection.addListener(*this);
    }

    void setContext(GMainContext* context) { context_ = context; }

    void handleEvent(const xcb_generic_event_t& /*event*/) override {
        if (screen_.layoutIsStale()) {
            task_.schedule(context_);
        }
    }

  private:
    ScreenState& screen_;
    GMainContext* context_ = nullptr;
    DeferredTask task_;
};

}  // namespace

struct X11Platform::Parts {
    explicit Parts(std::unique_ptr<X11Connection> opened) : connection(std::move(opened)) {}

    std::unique_ptr<X11Connection> connection;
    ScreenState screen{*connection};
    LayoutRefresh layoutRefresh{*connection, screen};
    X11Displays displays{screen};
    X11Pointer pointer{screen};
    AgentSelection selection{*connection};
    /// Made when first asked for: a start that only hands over its URLs needs no keymap.
    std::unique_ptr<X11HotKeys> hotKeys;
    std::unique_ptr<X11EventSource> source;
    GMainContext* context = nullptr;
};

X11Platform::X11Platform(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {}
X11Platform::~X11Platform() = default;

std::unique_ptr<X11Platform> X11Platform::connect(std::string& error) {
    auto connection = X11Connection::open(error);
    if (!connection) {
        return nullptr;
    }
    auto parts = std::make_unique<Parts>(std::move(connection));
    if (parts->screen.isInsideWayland()) {
        error = "this is a Wayland session, whose pointer an X program cannot move; log in to an X11 session";
        return nullptr;
    }
    return std::unique_ptr<X11Platform>(new X11Platform(std::move(parts)));
}

DisplayServices& X11Platform::displays() {
    return parts_->displays;
}

PointerReader& X11Platform::pointerReader() {
    return parts_->pointer;
}

PointerWarper& X11Platform::pointerWarper() {
    return parts_->pointer;
}

HotKeyServices& X11Platform::hotKeys() {
    if (!parts_->hotKeys) {
        parts_->hotKeys = std::make_unique<X11HotKeys>(*parts_->connection, parts_->screen);
        parts_->hotKeys->setContext(parts_->context);
    }
    return *parts_->hotKeys;
}

bool X11Platform::claimDisplay() {
    return parts_->selection.claim();
}

bool X11Platform::sendToAgent(const std::vector<std::string>& urls) {
    return parts_->selection.send(urls);
}

void X11Platform::attach(GMainContext* context, std::function<void()> connectionLost,
                         std::function<void(std::vector<std::string>)> opened) {
    parts_->context = context;
    parts_->layoutRefresh.setContext(context);
    parts_->selection.setOpened(std::move(opened));
    if (parts_->hotKeys) {
        parts_->hotKeys->setContext(context);
    }
    parts_->source = std::make_unique<X11EventSource>(
        *parts_->connection, context, [this] { parts_->screen.beginTurn(); }, std::move(connectionLost));
}

}  // namespace vantrel::x11
