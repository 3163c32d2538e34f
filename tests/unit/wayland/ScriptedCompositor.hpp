#pragma once

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "Vantrel/Handles/FileDescriptor.hpp"

namespace vantrel::wayland {

/// A compositor that says what a test has it say, in Wayland's wire format.
class ScriptedCompositor {
  public:
    using Words = std::vector<std::uint32_t>;

    struct Request {
        std::uint32_t object;
        std::uint32_t opcode;
        Words arguments;
    };

    /// The next connection that is opened leads here.
    ScriptedCompositor() {
        std::array<int, 2> ends{};
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()), 0);
        socket_ = FileDescriptor(ends[0]);
        setenv("WAYLAND_SOCKET", std::to_string(ends[1]).c_str(), 1);
    }

    void say(std::uint32_t object, std::uint32_t event, const Words& arguments) const {
        constexpr std::uint32_t head = 2;
        const auto size = static_cast<std::uint32_t>((head + arguments.size()) * sizeof(std::uint32_t));
        Words message{object, size << 16U | event};
        message.insert(message.end(), arguments.begin(), arguments.end());
        EXPECT_EQ(send(socket_.get(), message.data(), size, MSG_NOSIGNAL), static_cast<ssize_t>(size));
    }

    void offer(std::uint32_t name, std::string_view interface, std::uint32_t version) const {
        // With its NUL, and filled up to whole words.
        Words text(interface.size() / sizeof(std::uint32_t) + 1);
        std::memcpy(text.data(), interface.data(), interface.size());
        Words arguments{name, static_cast<std::uint32_t>(interface.size() + 1)};
        arguments.insert(arguments.end(), text.begin(), text.end());
        arguments.push_back(version);
        say(registry, 0, arguments);
    }

    /// What was asked for since the last call.
    [[nodiscard]] std::vector<Request> heard() const {
        Words words(1024);
        const ssize_t count = recv(socket_.get(), words.data(), words.size() * sizeof(std::uint32_t), MSG_DONTWAIT);
        words.resize(count < 0 ? 0 : static_cast<std::size_t>(count) / sizeof(std::uint32_t));
        std::vector<Request> requests;
        for (auto word = words.begin(); word != words.end();) {
            const auto next = word + static_cast<std::ptrdiff_t>((word[1] >> 16U) / sizeof(std::uint32_t));
            requests.push_back({word[0], word[1] & 0xFFFFU, Words(word + 2, next)});
            word = next;
        }
        return requests;
    }

    static constexpr std::uint32_t display = 1;
    static constexpr std::uint32_t registry = 2;  // the first object that is asked for

  private:
    FileDescriptor socket_;
};

}  // namespace vantrel::wayland
