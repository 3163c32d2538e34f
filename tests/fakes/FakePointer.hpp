#pragma once

#include <vector>

#include "Vantrel/Platform/PointerServices.hpp"
#include "tests/fakes/Journal.hpp"

namespace vantrel::fake {

/// A pointer that goes where it is warped to.
class FakePointer final : public PointerReader, public PointerWarper {
  public:
    explicit FakePointer(Journal& journal) : journal_(journal) {}

    std::optional<CGEvent> CGEventCreate() override {
        journal_.emplace_back("CGEventCreate");
        return isReadable ? std::optional(CGEvent{location}) : std::nullopt;
    }
    CGPoint CGEventGetLocation(const CGEvent& event) override { return event.location; }
    void CGWarpMouseCursorPosition(CGPoint position) override {
        journal_.push_back("CGWarpMouseCursorPosition(" + journalText(position.x) + ", " + journalText(position.y) +
                           ")");
        location = position;
        warps.push_back(position);
    }
    void CGAssociateMouseAndMouseCursorPosition(bool connected) override {
        journal_.emplace_back(connected ? "CGAssociateMouseAndMouseCursorPosition(true)"
                                        : "CGAssociateMouseAndMouseCursorPosition(false)");
    }

    CGPoint location;
    bool isReadable = true;
    std::vector<CGPoint> warps;  ///< every place it was warped to

  private:
    Journal& journal_;
};

}  // namespace vantrel::fake
