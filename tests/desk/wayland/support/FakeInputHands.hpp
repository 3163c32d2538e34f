#pragma once

#include <fake-input.h>

#include "tests/desk/wayland/support/Hands.hpp"
#include "tests/desk/wayland/support/KeyboardMap.hpp"

namespace vantrel::desk {

/// Hands by KWin's protocol for them. KWin has a keyboard map of its own; theirs only tells where a key is.
class FakeInputHands final : public Hands {
  public:
    /// The protocol's object stays the caller's.
    FakeInputHands(org_kde_kwin_fake_input& input, const KeyboardMap& map);

    void key(std::string_view name, bool isDown) override;
    /// Throws: KWin is asked for that on the bus.
    void chooseLayout(unsigned number) override;
    void moveTo(LayoutPoint point, const std::vector<LayoutArea>& displays) override;
    void button(bool isDown) override;

  private:
    void send(LayoutPoint point);

    org_kde_kwin_fake_input& input_;
    const KeyboardMap& map_;
};

}  // namespace vantrel::desk
