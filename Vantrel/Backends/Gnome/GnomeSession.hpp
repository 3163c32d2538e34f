#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Vantrel/Backends/Wayland/WaylandConnection.hpp"
#include "Vantrel/Platform/DisplaySession.hpp"

namespace vantrel::gnome {

/// GNOME on Wayland: Mutter tells of the displays, and Vantrel's extension of GNOME Shell does what Mutter lets no
/// program do. Without the extension the agent runs all the same, and the pointer stays where it is.
class GnomeSession final : public DisplaySession {
  public:
    /// Whether that compositor is GNOME Shell.
    static bool isServedBy(const wayland::WaylandConnection& compositor);

    /// Null, with one clear line in `error`, when the compositor or the session's bus does not answer.
    static std::unique_ptr<GnomeSession> connect(std::unique_ptr<wayland::WaylandConnection> compositor,
                                                 std::string& error);

    ~GnomeSession() override;
    GnomeSession(const GnomeSession&) = delete;
    GnomeSession& operator=(const GnomeSession&) = delete;

    [[nodiscard]] std::string windowingSystem() const override { return "wayland"; }
    DisplayServices& displays() override;
    PointerReader& pointerReader() override;
    PointerWarper& pointerWarper() override;
    HotKeyServices& hotKeys() override;
    bool claim() override;
    bool handOver(const std::vector<std::string>& urls) override;
    void attach(Events events) override;
    void setRecording(bool isRecording) override;
    [[nodiscard]] bool capturesKeys() const override;
    void setCaptureEvents(CaptureEvents events) override;
    std::unique_ptr<ItemPresenter> makeItemPresenter(ItemPresenter::Events events) override;

  private:
    struct Abilities;
    struct Parts;
    explicit GnomeSession(std::unique_ptr<Parts> parts);
    Abilities& abilities();

    std::unique_ptr<Parts> parts_;
};

}  // namespace vantrel::gnome
