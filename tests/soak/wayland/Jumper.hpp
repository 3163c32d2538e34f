#pragma once

#include <memory>

#include "tests/soak/Foresight.hpp"
#include "tests/soak/Random.hpp"
#include "tests/soak/StoreReader.hpp"
#include "tests/soak/wayland/Session.hpp"

namespace vantrel::soak {

/// How the person asks for a jump.
enum class Request { primaryKey, key, url };

/// What came of a jump that is as it may be.
enum class Outcome {
    landed,    ///< where the rules say
    noCursor,  ///< the agent said so, nothing moved and nothing is remembered
    refused,   ///< it is remembered where the pointer was, but the desktop has left it there
    unheard    ///< the agent did nothing, as it does while its hot keys are away
};

/// Has the agent jump, and judges each jump by a second description of the rules.
class Jumper {
  public:
    explicit Jumper(Session& session) : session_(session) { sees(); }

    Foresight& foresight() { return foresight_; }

    /// The session shows other displays now.
    void sees() { foresight_.see(placed(session_.shown())); }

    /// Asks for a jump of the pointer, which the person sees there, and tells what came of it. Throws when it is none
    /// of the outcomes.
    Outcome jump(desk::LayoutPoint departure, Side side, Request request);

    /// The same while the pointer cannot be seen or moved: `end` makes that so again before it is looked at.
    Outcome jumpUnseen(desk::LayoutPoint departure, Side side, Request request, const std::function<void()>& end);

    /// Somewhere on one of the displays, at times on an edge, from where a jump leads elsewhere.
    desk::LayoutPoint placeToLeave(Random& random, Side side);
    /// Whether a jump from there leads elsewhere.
    [[nodiscard]] bool leadsAway(desk::LayoutPoint place, Side side) const;

    /// Whether the store says that the pointer has left a display there.
    bool isRemembered(desk::LayoutPoint departure);

    StoreReader& store();
    void closeStore() { store_.reset(); }

  private:
    desk::LayoutPoint randomPlace(Random& random);
    void ask(Side side, Request request);
    /// Waits until there is something to judge, or can hardly be any more.
    void awaitEffect(desk::LayoutPoint departure, bool wasRemembered);
    Outcome judge(desk::LayoutPoint departure, Side side, bool wasRemembered);
    Outcome land(desk::LayoutPoint departure, Side side);
    void clearLabel();
    [[nodiscard]] std::string whereabouts();

    Session& session_;
    Foresight foresight_;
    std::unique_ptr<StoreReader> store_;
    bool saysNoCursor_ = false;  ///< since the last jump
};

}  // namespace vantrel::soak
