#pragma once

#include <memory>

#include "Vantrel/Channel/Channel.hpp"
#include "helpers/messages/Stage.hpp"

namespace vantrel::overlay {

/// Shows what the agent asks for, until the agent hangs up or the display server goes away.
class Overlay {
  public:
    Overlay(std::unique_ptr<Stage> stage, Channel agent);

    void run();

  private:
    void obey(const Message& message);
    void menuEnded(std::optional<std::size_t> row);
    void serveAgent();
    void wait();
    [[nodiscard]] int waitingTime() const;

    Channel agent_;
    std::unique_ptr<Stage> stage_;
};

}  // namespace vantrel::overlay
