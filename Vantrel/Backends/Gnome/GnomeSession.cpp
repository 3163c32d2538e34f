#include "Vantrel/Backends/Gnome/GnomeSession.hpp"

#include <chrono>
#include <cstdio>
#include <optional>
#include <utility>

#include "Vantrel/Backends/Common/HotKeyRegistry.hpp"
#include "Vantrel/Backends/Gnome/GnomeHotKeyBinder.hpp"
#include "Vantrel/Backends/Gnome/GnomeItemPresenter.hpp"
#include "Vantrel/Backends/Gnome/GnomeScreen.hpp"
#include "Vantrel/Backends/Gnome/ShellExtension.hpp"
#include "Vantrel/Backends/Wayland/Seat.hpp"
#include "Vantrel/Backends/Wayland/SeatKeymap.hpp"
#include "Vantrel/Backends/Wayland/SessionSocket.hpp"
#include "Vantrel/Backends/Wayland/WaylandEventSource.hpp"
#include "Vantrel/Handles/FileContents.hpp"
#include "Vantrel/Handles/LoopSource.hpp"
#include "Vantrel/Handles/SessionBusOffer.hpp"

namespace vantrel::gnome {

namespace {

/// For the answers at the start; a shell that is busy with its own start may take a while.
constexpr std::chrono::seconds startDeadline{5};

/// At the start of a session the extension may come after the agent.
constexpr std::chrono::seconds patienceWithExtension{5};

constexpr std::chrono::milliseconds captureDeadline{500};

}  // namespace

/// What an agent works with. A start that only hands over its URLs has no use for it.
struct GnomeSession::Abilities {
    Abilities(GDBusConnection* bus, wayland::WaylandConnection& connection, const wayland::Registry& registry,
              const wayland::Seat& seat)
        : extension(shareObject(bus)) {
        isOpen = extension.open({.presenceChanged = [this] { presenceChanged(); },
                                 .pressed =
                                     [this](std::uint32_t number, wayland::LayoutPoint place) {
                                         screen->takePlace(place);
                                         binder->press(number);
                                     },
                                 .rowChosen =
                                     [this](std::uint32_t row) {
                                         if (presenter != nullptr) {
                                             presenter->chooseRow(row);
                                         }
                                     },
                                 .key =
                                     [this](const CapturedKey& key) {
                                         if (capture.key) {
                                             capture.key(key);
                                         }
                                     },
                                 .captureEnded = [this] { endCapture(); }});
        screen.emplace(shareObject(bus), extension);
        binder.emplace(extension, registry, [&connection, &seat](wayland::Clock::time_point deadline) {
            return wayland::readSeatKeymap(connection, seat, deadline);
        });
        hotKeys.emplace(*binder);
    }

    void presenceChanged() {
        if (!hotKeys) {
            return;  // it was there from the start
        }
        if (extension.isPresent() && binder->lacksHotKeys()) {
            interrupted();
            return;
        }
        binder->restore();
        if (presenter != nullptr) {
            presenter->presenceChanged();
        }
        if (!extension.isPresent()) {
            endCapture();
        }
    }

    void endCapture() {
        if (std::exchange(isCapturing, false) && capture.ended) {
            capture.ended();
        }
    }

    void explainAbsence() const {
        if (!extension.isPresent()) {
            std::fprintf(
                stderr, "vantrel: %s\n",
                isOpen ? extension.whyMissing().c_str() : "GNOME serves another program that calls itself Vantrel");
        }
    }

    ShellExtension extension;
    bool isOpen = false;
    std::optional<GnomeScreen> screen;
    std::optional<GnomeHotKeyBinder> binder;
    std::optional<backend::HotKeyRegistry> hotKeys;
    GnomeItemPresenter* presenter = nullptr;
    CaptureEvents capture;
    bool isCapturing = false;
    std::function<void()> interrupted;
};

struct GnomeSession::Parts {
    Parts(std::unique_ptr<wayland::WaylandConnection> opened, GObjectPointer<GDBusConnection> joined)
        : bus(std::move(joined)), connection(std::move(opened)) {}

    GObjectPointer<GDBusConnection> bus;
    std::unique_ptr<wayland::WaylandConnection> connection;
    wayland::Registry registry{*connection};
    std::optional<wayland::Seat> seat;
    wayland::SessionSocket socket = wayland::SessionSocket::ofThisSession();
    std::unique_ptr<Abilities> abilities;
    LoopSource absence;
    std::unique_ptr<wayland::WaylandEventSource> source;
};

bool GnomeSession::isServedBy(const wayland::WaylandConnection& compositor) {
    const auto peer = compositor.peer();
    return peer && contentsOf("/proc/" + std::to_string(peer->processId) + "/comm") == "gnome-shell\n";
}

std::unique_ptr<GnomeSession> GnomeSession::connect(std::unique_ptr<wayland::WaylandConnection> compositor,
                                                    std::string& error) {
    GObjectPointer<GDBusConnection> bus(isSessionBusOffered() ? g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr)
                                                              : nullptr);
    if (!bus) {
        error = "GNOME on Wayland is served over the session bus, and there is none";
        return nullptr;
    }
    auto parts = std::make_unique<Parts>(std::move(compositor), std::move(bus));
    if (!parts->connection->synchronize(wayland::Clock::now() + startDeadline) ||
        !parts->registry.offers(wl_seat_interface, wayland::Seat::version)) {
        error = "GNOME Shell does not answer";
        return nullptr;
    }
    parts->seat.emplace(parts->registry);
    return std::unique_ptr<GnomeSession>(new GnomeSession(std::move(parts)));
}

GnomeSession::GnomeSession(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {}
GnomeSession::~GnomeSession() = default;

GnomeSession::Abilities& GnomeSession::abilities() {
    if (!parts_->abilities) {
        // The seat tells of itself.
        parts_->connection->synchronize(wayland::Clock::now() + startDeadline);
        parts_->abilities =
            std::make_unique<Abilities>(parts_->bus.get(), *parts_->connection, parts_->registry, *parts_->seat);
    }
    return *parts_->abilities;
}

DisplayServices& GnomeSession::displays() {
    return abilities().screen->displays();
}

PointerReader& GnomeSession::pointerReader() {
    return *abilities().screen;
}

PointerWarper& GnomeSession::pointerWarper() {
    return *abilities().screen;
}

HotKeyServices& GnomeSession::hotKeys() {
    return *abilities().hotKeys;
}

bool GnomeSession::claim() {
    return parts_->socket.claim();
}

bool GnomeSession::handOver(const std::vector<std::string>& urls) {
    return parts_->socket.send(urls);
}

void GnomeSession::attach(Events events) {
    Abilities& served = abilities();
    served.interrupted = std::move(events.interrupted);
    parts_->socket.serve(std::move(events.opened));
    parts_->absence = LoopSource::after(patienceWithExtension, [&served] { served.explainAbsence(); });
    parts_->source = std::make_unique<wayland::WaylandEventSource>(
        *parts_->connection,
        wayland::WaylandEventSource::Events{
            .turnBegan = [&served] { served.screen->beginTurn(); },
            .handled = [] {},
            .connectionLost = [this, ended = std::move(events.ended)] { ended(parts_->connection->endReason()); }});
}

void GnomeSession::setRecording(bool isRecording) {
    Abilities& served = abilities();
    if (!isRecording) {
        served.isCapturing = false;
        served.extension.tell("EndCapture");
        return;
    }
    if (!capturesKeys()) {
        return;
    }
    served.isCapturing = true;
    gboolean isBegun = FALSE;
    if (const auto answer =
            served.extension.ask("BeginCapture", nullptr, "(b)", wayland::Clock::now() + captureDeadline)) {
        g_variant_get(answer.get(), "(b)", &isBegun);
    }
    if (isBegun == FALSE) {
        served.endCapture();
    }
}

bool GnomeSession::capturesKeys() const {
    return parts_->abilities && parts_->abilities->extension.isPresent();
}

void GnomeSession::setCaptureEvents(CaptureEvents events) {
    abilities().capture = std::move(events);
}

std::unique_ptr<ItemPresenter> GnomeSession::makeItemPresenter(ItemPresenter::Events events) {
    Abilities& served = abilities();
    auto presenter = std::make_unique<GnomeItemPresenter>(served.extension, std::move(events),
                                                          [&served] { served.presenter = nullptr; });
    served.presenter = presenter.get();
    return presenter;
}

}  // namespace vantrel::gnome
