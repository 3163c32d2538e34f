#pragma once

#include <memory>
#include <optional>

#include "Vantrel/Channel/Channel.hpp"
#include "helpers/messages/FlashText.hpp"
#include "helpers/messages/PopupMenu.hpp"
#include "helpers/messages/Screen.hpp"
#include "helpers/messages/Typesetter.hpp"

namespace vantrel::overlay {

/// Shows what the agent asks for, until the agent hangs up or the X server goes away.
class Overlay {
  public:
    Overlay(std::unique_ptr<Screen> screen, Channel agent);

    void run();

  private:
    using Clock = std::chrono::steady_clock;

    void obey(const Message& message);
    void openMenu(const std::vector<MenuRow>& rows);
    void menuEnded(std::optional<std::size_t> row);
    void serveAgent();
    void serveScreen();
    void serveTimers();
    void wait();
    [[nodiscard]] int waitingTime() const;

    std::unique_ptr<Screen> screen_;
    Channel agent_;
    Typesetter typesetter_;
    FlashText flashText_;
    std::unique_ptr<PopupMenu> menu_;
    std::unique_ptr<PopupMenu> endedMenu_;  ///< released once its own call is over
};

}  // namespace vantrel::overlay
