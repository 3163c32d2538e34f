#include <gtest/gtest.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "Vantrel/Backends/Wayland/Outputs.hpp"
#include "Vantrel/Handles/FileDescriptor.hpp"

namespace vantrel::wayland {
namespace {

using Words = std::vector<std::uint32_t>;

/// A compositor that says what a test has it say, in Wayland's wire format.
class ScriptedCompositor {
  public:
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

    static constexpr std::uint32_t registry = 2;  // the first object that is asked for

  private:
    FileDescriptor socket_;
};

bool releases(const std::vector<ScriptedCompositor::Request>& requests, std::uint32_t output) {
    return std::any_of(requests.begin(), requests.end(), [output](const auto& request) {
        return request.object == output && request.opcode == WL_OUTPUT_RELEASE;
    });
}

TEST(Outputs, current_outputGoes_handleStaysAsLongAsItIsHeld) {
    constexpr std::uint32_t outputName = 7;
    const ScriptedCompositor compositor;
    std::string error;
    const auto connection = WaylandConnection::open(error);
    ASSERT_TRUE(connection) << error;
    Registry registry(*connection);
    compositor.offer(1, zxdg_output_manager_v1_interface.name, 3);
    compositor.offer(outputName, wl_output_interface.name, 4);
    connection->drain();
    const auto manager = registry.bindFirst<zxdg_output_manager_v1>(zxdg_output_manager_v1_interface, 3);
    Outputs outputs(registry, *manager);
    connection->flush();
    const auto bound = compositor.heard();
    ASSERT_EQ(bound.back().opcode, static_cast<std::uint32_t>(ZXDG_OUTPUT_MANAGER_V1_GET_XDG_OUTPUT));
    const std::uint32_t logical = bound.back().arguments[0];
    const std::uint32_t output = bound.back().arguments[1];
    constexpr std::uint32_t logicalSize = 1;
    constexpr std::uint32_t done = 2;
    compositor.say(logical, logicalSize, {800, 600});
    compositor.say(output, done, {});
    connection->drain();
    auto held = outputs.current();
    ASSERT_EQ(held.size(), 1U);

    constexpr std::uint32_t globalRemove = 1;
    compositor.say(ScriptedCompositor::registry, globalRemove, {outputName});
    connection->drain();
    connection->flush();
    EXPECT_TRUE(outputs.current().empty());
    EXPECT_FALSE(releases(compositor.heard(), output)) << "whoever has read the outputs may still send to it";

    held.clear();
    connection->flush();
    EXPECT_TRUE(releases(compositor.heard(), output));
}

}  // namespace
}  // namespace vantrel::wayland
