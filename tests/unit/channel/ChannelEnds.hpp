#pragma once

#include <sys/socket.h>

#include <array>
#include <stdexcept>
#include <string>

#include "Vantrel/Channel/Channel.hpp"

namespace vantrel {

/// The two ends of a socket of packets, as an agent and its helper have them.
struct SocketPair {
    SocketPair() {
        std::array<int, 2> sockets{};
        if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, sockets.data()) != 0) {
            throw std::runtime_error("no pair of sockets");
        }
        first = FileDescriptor(sockets[0]);
        second = FileDescriptor(sockets[1]);
    }

    FileDescriptor first;
    FileDescriptor second;
};

/// A channel with both of its ends in this process.
struct ChannelEnds {
    explicit ChannelEnds(SocketPair pair = {}) : agent(std::move(pair.first)), helper(std::move(pair.second)) {}

    Channel agent;
    Channel helper;
};

}  // namespace vantrel
