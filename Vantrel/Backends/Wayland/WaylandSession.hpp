#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Vantrel/Backends/Wayland/Compositor.hpp"
#include "Vantrel/Platform/DisplaySession.hpp"

namespace vantrel::wayland {

/// A Wayland compositor: displays, pointer, the place of the one agent; and hot keys where one of the finders knows the
/// compositor.
class WaylandSession final : public DisplaySession {
  public:
    /// Null, with one clear line in `error`, when the compositor lacks what is needed or does not answer.
    static std::unique_ptr<WaylandSession> connect(std::unique_ptr<WaylandConnection> connection,
                                                   const std::vector<CompositorFinder>& finders, std::string& error);

    ~WaylandSession() override;
    WaylandSession(const WaylandSession&) = delete;
    WaylandSession& operator=(const WaylandSession&) = delete;

    DisplayServices& displays() override;
    PointerReader& pointerReader() override;
    PointerWarper& pointerWarper() override;
    HotKeyServices& hotKeys() override;
    bool claim() override;
    bool handOver(const std::vector<std::string>& urls) override;
    void attach(Events events) override;
    void setRecording(bool isRecording) override;
    [[nodiscard]] std::string windowingSystem() const override { return "wayland"; }
    /// Wayland has no tray of its own.
    std::unique_ptr<ItemPresenter> makeItemPresenter(ItemPresenter::Events events) override;

  private:
    struct Globals;
    struct Abilities;
    struct Parts;
    explicit WaylandSession(std::unique_ptr<Parts> parts);
    Abilities& abilities();

    std::unique_ptr<Parts> parts_;
};

}  // namespace vantrel::wayland
