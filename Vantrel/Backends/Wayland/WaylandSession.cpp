#include "Vantrel/Backends/Wayland/WaylandSession.hpp"

#include <algorithm>
#include <array>
#include <utility>

#include "Vantrel/Backends/Common/DisplayList.hpp"
#include "Vantrel/Backends/Common/HotKeyRegistry.hpp"
#include "Vantrel/Backends/Wayland/HotKeyProtocolBinder.hpp"
#include "Vantrel/Backends/Wayland/OverlayReader.hpp"
#include "Vantrel/Backends/Wayland/SessionSocket.hpp"
#include "Vantrel/Backends/Wayland/UnboundHotKeys.hpp"
#include "Vantrel/Backends/Wayland/WaylandCursor.hpp"
#include "Vantrel/Backends/Wayland/WaylandEventSource.hpp"
#include "Vantrel/Handles/LoopSource.hpp"

namespace vantrel::wayland {

namespace {

/// For the answers at the start; a compositor that is busy with its own start may take a while.
constexpr std::chrono::seconds startDeadline{5};

struct Need {
    const wl_interface& interface;
    std::uint32_t version;
};

const std::array needs{Need{wl_compositor_interface, 4},          Need{wl_shm_interface, 1},
                       Need{wl_seat_interface, Seat::version},    Need{wp_viewporter_interface, 1},
                       Need{zxdg_output_manager_v1_interface, 2}, Need{zwlr_layer_shell_v1_interface, 1}};

/// One of them moves the pointer.
const std::array movers{Need{zwlr_virtual_pointer_manager_v1_interface, 2},
                        Need{org_kde_kwin_fake_input_interface, fakeInputVersion}};

/// What the compositor lacks, by name, for a person to look up; empty when it has all.
std::string missingIn(const Registry& registry) {
    std::string missing;
    for (const auto& [interface, version] : needs) {
        if (!registry.offers(interface, version)) {
            missing += missing.empty() ? "" : ", ";
            missing += interface.name;
        }
    }
    if (std::none_of(movers.begin(), movers.end(),
                     [&](const Need& mover) { return registry.offers(mover.interface, mover.version); })) {
        missing += missing.empty() ? "" : ", ";
        // KWin hides it from programs without the permission.
        missing += registry.offers(kde_output_order_v1_interface, 1) ? org_kde_kwin_fake_input_interface.name
                                                                     : zwlr_virtual_pointer_manager_v1_interface.name;
    }
    return missing;
}

/// Why a compositor without that cannot be served.
std::string refusal(const std::string& missing) {
    if (missing == org_kde_kwin_fake_input_interface.name) {
        return "Plasma lets a program move the pointer when its desktop file says X-KDE-Wayland-Interfaces=" + missing +
               "; that of the package does, and scripts/run makes one";
    }
    return "this Wayland compositor does not let programs read and move the pointer (it lacks " + missing + ")";
}

}  // namespace

struct WaylandSession::Globals {
    explicit Globals(const Registry& registry)
        : compositor(registry.bindFirst<wl_compositor>(wl_compositor_interface, 4)),
          shm(registry.bindFirst<wl_shm>(wl_shm_interface, 1)),
          viewporter(registry.bindFirst<wp_viewporter>(wp_viewporter_interface, 1)),
          outputs(registry.bindFirst<zxdg_output_manager_v1>(zxdg_output_manager_v1_interface, 3)),
          layerShell(registry.bindFirst<zwlr_layer_shell_v1>(zwlr_layer_shell_v1_interface, 4)),
          pointers(registry.bindFirst<zwlr_virtual_pointer_manager_v1>(zwlr_virtual_pointer_manager_v1_interface, 2)) {}

    WaylandPointer<wl_compositor> compositor;
    WaylandPointer<wl_shm> shm;
    WaylandPointer<wp_viewporter> viewporter;
    WaylandPointer<zxdg_output_manager_v1> outputs;
    WaylandPointer<zwlr_layer_shell_v1> layerShell;
    WaylandPointer<zwlr_virtual_pointer_manager_v1> pointers;
};

/// What an agent works with. A start that only hands over its URLs has no use for it.
struct WaylandSession::Abilities {
    Abilities(WaylandConnection& connection, const Registry& registry, const Globals& globals, Seat& seat,
              const Outputs& outputs, const std::vector<CompositorFinder>& finders)
        : pointers(globals.pointers.get(), seat),
          reader(connection, {*globals.compositor, *globals.shm, *globals.viewporter, *globals.layerShell}, seat,
                 pointers, [this] { lookUnderPointer(); }),
          sessions(connection, registry, seat),
          compositor(find(connection, registry, seat, finders)),
          screen(connection, outputs, reader, sessions, pointers, compositor.get()),
          protocolBinder(HotKeyProtocolBinder::isOffered(registry)
                             ? std::make_unique<HotKeyProtocolBinder>(connection, registry, seat)
                             : nullptr),
          binder(protocolBinder ? protocolBinder.get()
                 : compositor   ? compositor->hotKeys()
                                : nullptr) {
        screen.refreshLayout();
    }

    static std::unique_ptr<Compositor> find(WaylandConnection& connection, const Registry& registry, const Seat& seat,
                                            const std::vector<CompositorFinder>& finders) {
        const auto peer = connection.peer();
        if (!peer) {
            return nullptr;
        }
        const CompositorAddress address{
            connection, registry, *peer, seat.name(),
            [&connection, &seat](Clock::time_point deadline) { return readSeatKeymap(connection, seat, deadline); }};
        for (const CompositorFinder& finder : finders) {
            if (auto compositor = finder(address)) {
                return compositor;
            }
        }
        return nullptr;
    }

    static std::unique_ptr<HotKeyServices> makeHotKeys(backend::HotKeyBinder* binder) {
        if (binder == nullptr) {
            return std::make_unique<UnboundHotKeys>();
        }
        return std::make_unique<backend::HotKeyRegistry>(*binder);
    }

    void lookUnderPointer() {
        if (!compositor || !compositor->lookUnderPointer()) {
            pointers.stir();
        }
    }

    VirtualPointers pointers;
    OverlayReader reader;
    CursorSessions sessions;
    std::unique_ptr<Compositor> compositor;
    WaylandScreen screen;
    backend::DisplayList displays{screen.layout(), [this] { screen.refreshLayout(); }};
    WaylandCursor cursor{screen};
    std::unique_ptr<HotKeyProtocolBinder> protocolBinder;
    backend::HotKeyBinder* binder;  ///< null where no program binds keys
    std::unique_ptr<HotKeyServices> hotKeys = makeHotKeys(binder);
};

struct WaylandSession::Parts {
    Parts(std::unique_ptr<WaylandConnection> opened, std::unique_ptr<Registry> filled,
          std::vector<CompositorFinder> known)
        : connection(std::move(opened)), registry(std::move(filled)), finders(std::move(known)) {}

    std::unique_ptr<WaylandConnection> connection;
    std::unique_ptr<Registry> registry;
    std::vector<CompositorFinder> finders;
    Globals globals{*registry};
    Seat seat{*registry};
    Outputs outputs{*registry, *globals.outputs};
    SessionSocket socket = SessionSocket::ofThisSession();
    std::unique_ptr<Abilities> abilities;
    /// Reads a changed layout while nobody waits for it, so that the next press finds it ready.
    LoopSource layoutTask;
    std::unique_ptr<WaylandEventSource> source;
};

WaylandSession::WaylandSession(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {}
WaylandSession::~WaylandSession() = default;

std::unique_ptr<WaylandSession> WaylandSession::connect(std::unique_ptr<WaylandConnection> connection,
                                                        const std::vector<CompositorFinder>& finders,
                                                        std::string& error) {
    auto registry = std::make_unique<Registry>(*connection);
    if (!connection->synchronize(Clock::now() + startDeadline)) {
        error = "the Wayland compositor does not answer";
        return nullptr;
    }
    if (const std::string missing = missingIn(*registry); !missing.empty()) {
        error = refusal(missing);
        return nullptr;
    }
    return std::unique_ptr<WaylandSession>(
        new WaylandSession(std::make_unique<Parts>(std::move(connection), std::move(registry), finders)));
}

WaylandSession::Abilities& WaylandSession::abilities() {
    if (!parts_->abilities) {
        // The outputs and the seat tell of themselves.
        parts_->connection->synchronize(Clock::now() + startDeadline);
        parts_->abilities = std::make_unique<Abilities>(*parts_->connection, *parts_->registry, parts_->globals,
                                                        parts_->seat, parts_->outputs, parts_->finders);
    }
    return *parts_->abilities;
}

DisplayServices& WaylandSession::displays() {
    return abilities().displays;
}

PointerReader& WaylandSession::pointerReader() {
    return abilities().cursor;
}

PointerWarper& WaylandSession::pointerWarper() {
    return abilities().cursor;
}

HotKeyServices& WaylandSession::hotKeys() {
    return *abilities().hotKeys;
}

bool WaylandSession::claim() {
    return parts_->socket.claim();
}

bool WaylandSession::handOver(const std::vector<std::string>& urls) {
    return parts_->socket.send(urls);
}

void WaylandSession::attach(Events events) {
    WaylandScreen& screen = abilities().screen;
    parts_->socket.serve(std::move(events.opened));
    parts_->source = std::make_unique<WaylandEventSource>(
        *parts_->connection,
        WaylandEventSource::Events{
            .turnBegan = [&screen] { screen.beginTurn(); },
            .handled =
                [this] {
                    if (abilities().screen.isLayoutStale()) {
                        parts_->layoutTask =
                            LoopSource::whenIdle([this] { parts_->abilities->screen.refreshLayout(); });
                    }
                },
            .connectionLost =
                [this, ended = std::move(events.ended), interrupted = std::move(events.interrupted)] {
                    const auto& compositor = abilities().compositor;
                    if (compositor && compositor->comesBack() && !parts_->connection->isRefused()) {
                        interrupted();
                    } else {
                        ended(parts_->connection->endReason());
                    }
                }});
}

void WaylandSession::setRecording(bool isRecording) {
    if (abilities().binder != nullptr) {
        abilities().binder->setRecording(isRecording);
    }
}

std::unique_ptr<ItemPresenter> WaylandSession::makeItemPresenter(ItemPresenter::Events /*events*/) {
    return nullptr;
}

}  // namespace vantrel::wayland
