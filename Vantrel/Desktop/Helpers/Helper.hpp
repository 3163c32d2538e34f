#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "Vantrel/Channel/Channel.hpp"
#include "Vantrel/Handles/LoopSource.hpp"

namespace vantrel::desktop {

/// A helper program as the agent sees it: started when it is needed, listened to, and ended by hanging up. It ends with
/// the agent, however that ends, because its channel does. Main thread only.
class Helper {
  public:
    struct Events {
        /// A message of the program.
        std::function<void(const Message& message)> received;
        /// It has ended by itself, does not read any more, or is of another version, which is then named; whoever needs
        /// it starts it again. Not told of an end that was asked for here.
        std::function<void(const std::string& otherVersion)> ended;
    };

    /// Starts the program: the agent's end of its channel, closed when it could not be started.
    using Start = std::function<Channel()>;

    /// Starts nothing yet.
    Helper(Start start, Events events);
    ~Helper();
    Helper(const Helper&) = delete;
    Helper& operator=(const Helper&) = delete;

    /// Starts the program unless it runs; false when it cannot be started.
    bool start();

    [[nodiscard]] bool isRunning() const { return channel_.isOpen(); }

    /// Sends to the program where it runs. A program that does not read is given up.
    void send(const Message& message);

    /// Ends the program after that time, unless keep() or start() is called before.
    void endAfter(std::chrono::seconds time);
    void keep() { linger_.reset(); }

    /// Ends the program at once.
    void end();

  private:
    void receive();
    void noteEnd();

    Start start_;
    Events events_;
    Channel channel_;
    LoopSource listening_;
    LoopSource linger_;
};

}  // namespace vantrel::desktop
