#include <stdexcept>
#include <utility>

#include "benchmarks/wayland/JumpDesk.hpp"
#include "tests/desk/wayland/support/GnomeDesk.hpp"
#include "tests/desk/wayland/support/WaylandDesk.hpp"

namespace vantrel::bench {

using namespace desk;

namespace {

GnomeOptions optionsFor(Carrier carrier) {
    GnomeOptions options = GnomeDesk::twoDisplays();
    options.furtherExtensions.emplace_back(VANTREL_BENCH_STOPWATCH);
    if (carrier == Carrier::floor) {
        options.furtherExtensions.emplace_back(VANTREL_BENCH_GNOME_FLOOR_EXTENSION);
        options.hasExtension = false;
    }
    return options;
}

/// Presses come from an extension of the shell, and it tells when the shell has the pointer at its target.
class GnomeJumpDesk final : public JumpDesk {
  public:
    explicit GnomeJumpDesk(Carrier carrier) : desk_(optionsFor(carrier)) {
        if (carrier == Carrier::vantrel) {
            agent_ = desk_.startAgent();
        } else {
            ChildProcessOptions floor;
            floor.arguments = {VANTREL_BENCH_GNOME_FLOOR};
            floor.environment = desk_.environment();
            floor_ = std::make_unique<ChildProcess>(floor);
        }
        if (!waitUntil([&] {
                desk_.person().moveTo(onMain);
                return press(centreOfSecond).has_value();
            })) {
            throw std::runtime_error("nobody carries the pointer in GNOME");
        }
    }

    void moveTo(LayoutPoint place) override { desk_.person().moveTo(place); }

    std::optional<double> press(LayoutPoint target) override {
        const auto answer =
            desk_.shell().client().call("org.vantrel.Stopwatch", "/org/vantrel/Stopwatch", "org.vantrel.Stopwatch1",
                                        "TimeJump", g_variant_new("(dd)", target.x, target.y));
        double time = -1;
        if (answer) {
            g_variant_get(answer.get(), "(d)", &time);
        }
        return time < 0 ? std::nullopt : std::optional(time);
    }

    [[nodiscard]] pid_t carrier() const override { return agent_ ? agent_->processId() : floor_->processId(); }

  private:
    GnomeDesk desk_;
    std::unique_ptr<AgentProcess> agent_;
    std::unique_ptr<ChildProcess> floor_;
};

}  // namespace

JumpDesktop gnomeDesktop() {
    return {.name = "GNOME", .start = [](Carrier carrier) { return std::make_unique<GnomeJumpDesk>(carrier); }};
}

}  // namespace vantrel::bench
