#include "Vantrel/Backends/X11/X11Session.hpp"

#include <utility>

#include "Vantrel/Backends/Common/DisplayList.hpp"
#include "Vantrel/Backends/Common/HotKeyRegistry.hpp"
#include "Vantrel/Backends/X11/AgentSelection.hpp"
#include "Vantrel/Backends/X11/ScreenState.hpp"
#include "Vantrel/Backends/X11/Tray/TrayItemPresenter.hpp"
#include "Vantrel/Backends/X11/X11Connection.hpp"
#include "Vantrel/Backends/X11/X11EventSource.hpp"
#include "Vantrel/Backends/X11/X11HotKeyBinder.hpp"
#include "Vantrel/Backends/X11/X11Pointer.hpp"
#include "Vantrel/Handles/LoopSource.hpp"

namespace vantrel::x11 {

namespace {

/// Reads a changed layout while nobody waits for it, so that the next press finds it ready.
class LayoutRefresh final : public X11EventListener {
  public:
    LayoutRefresh(X11Connection& connection, ScreenState& screen) : screen_(screen) { connection.addListener(*this); }

    void handleEvent(const xcb_generic_event_t& /*event*/) override {
        if (screen_.layoutIsStale() && !task_.isSet()) {
            task_ = LoopSource::whenIdle([this] { screen_.synchronize(); });
        }
    }

  private:
    ScreenState& screen_;
    LoopSource task_;
};

}  // namespace

struct X11Session::Parts {
    explicit Parts(std::unique_ptr<X11Connection> opened) : connection(std::move(opened)) {}

    std::unique_ptr<X11Connection> connection;
    ScreenState screen{*connection};
    LayoutRefresh layoutRefresh{*connection, screen};
    backend::DisplayList displays{screen.layout(), [this] { screen.synchronize(); }};
    X11Pointer pointer{screen};
    AgentSelection selection{*connection};
    /// Made when first asked for: a start that only hands over its URLs needs no keymap.
    struct HotKeys {
        HotKeys(X11Connection& connection, ScreenState& screen) : binder(connection, screen) {}

        X11HotKeyBinder binder;
        backend::HotKeyRegistry registry{binder};
    };
    std::unique_ptr<HotKeys> hotKeys;
    std::unique_ptr<X11EventSource> source;
};

X11Session::X11Session(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {}
X11Session::~X11Session() = default;

std::unique_ptr<X11Session> X11Session::connect(std::string& error) {
    auto connection = X11Connection::open(error);
    if (!connection) {
        return nullptr;
    }
    auto parts = std::make_unique<Parts>(std::move(connection));
    if (parts->screen.isInsideWayland()) {
        error = "this is a Wayland session, whose pointer an X program cannot move; log in to an X11 session";
        return nullptr;
    }
    return std::unique_ptr<X11Session>(new X11Session(std::move(parts)));
}

DisplayServices& X11Session::displays() {
    return parts_->displays;
}

PointerReader& X11Session::pointerReader() {
    return parts_->pointer;
}

PointerWarper& X11Session::pointerWarper() {
    return parts_->pointer;
}

HotKeyServices& X11Session::hotKeys() {
    if (!parts_->hotKeys) {
        parts_->hotKeys = std::make_unique<Parts::HotKeys>(*parts_->connection, parts_->screen);
    }
    return parts_->hotKeys->registry;
}

bool X11Session::claim() {
    return parts_->selection.claim();
}

bool X11Session::handOver(const std::vector<std::string>& urls) {
    return parts_->selection.send(urls);
}

void X11Session::attach(Events events) {
    parts_->selection.setOpened(std::move(events.opened));
    parts_->source = std::make_unique<X11EventSource>(
        *parts_->connection, [this] { parts_->screen.beginTurn(); },
        [ended = std::move(events.ended)] { ended("the X server went away"); });
}

std::unique_ptr<ItemPresenter> X11Session::makeItemPresenter(ItemPresenter::Events events) {
    return std::make_unique<TrayItemPresenter>(std::move(events));
}

}  // namespace vantrel::x11
