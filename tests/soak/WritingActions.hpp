#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/soak/Random.hpp"
#include "tests/soak/SoakDesk.hpp"

namespace vantrel::soak {

/// Something that makes the agent write, asked for as a person asks for it.
struct WritingAction {
    std::string name;
    /// Everything but the last key; none where there is nothing to prepare.
    std::function<void()> prepare;
    /// The last key, which makes the agent write.
    std::function<void()> trigger;
    /// Whether the store holds the state after the action, or, where the action writes several times, after a part of
    /// it, and nothing else has changed.
    std::function<bool(const StoreContents& before, const StoreContents& now)> isAfter;
    /// Until when it is certainly written, in milliseconds, on a machine that is not too busy.
    double longest = 0;
};

/// A jump, a save, a burst of saves, clearing, and each setting in the settings window.
std::vector<WritingAction> writingActions(SoakDesk& desk, Random& random);

}  // namespace vantrel::soak
