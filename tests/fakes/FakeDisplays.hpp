#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "Vantrel/Platform/DisplayServices.hpp"
#include "tests/fakes/Journal.hpp"

namespace vantrel::fake {

/// A layout that tests lay out.
class FakeDisplays final : public DisplayServices {
  public:
    struct Display {
        CGDirectDisplayID id;
        CGRect bounds;
    };

    explicit FakeDisplays(Journal& journal) : journal_(journal) {}

    CGError CGGetActiveDisplayList(std::span<CGDirectDisplayID> activeDisplays, std::uint32_t& displayCount) override;
    CGRect CGDisplayBounds(CGDirectDisplayID display) override;

    std::vector<Display> layout;
    CGError countStatus = 0;                   ///< what asking for the number of displays returns
    CGError listStatus = 0;                    ///< what asking for their identifiers returns
    std::optional<std::uint32_t> listedCount;  ///< how many the list is said to hold, if not as many as it does
    std::function<void()> afterCount;          ///< runs between these two, where a real layout may change

  private:
    Journal& journal_;
};

}  // namespace vantrel::fake
