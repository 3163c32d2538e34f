#include "benchmarks/start/GrabWatch.hpp"

#include <poll.h>
#include <xcb/xcbext.h>

#include <cstdint>
#include <memory>
#include <stdexcept>

namespace vantrel::bench {

namespace {

constexpr std::uint8_t fromClient = 1;  // the category of a recorded request
constexpr std::uint8_t startOfData = 4;

using Reply = desk::XReply<xcb_record_enable_context_reply_t>;

/// The next message about the recording, or none within the time.
Reply nextMessage(desk::XConnection& connection, unsigned sequence, std::chrono::steady_clock::time_point end) {
    void* message = nullptr;
    while (xcb_poll_for_reply(connection.get(), sequence, &message, nullptr) == 0 || message == nullptr) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        pollfd descriptor{xcb_get_file_descriptor(connection.get()), POLLIN, 0};
        if (left.count() <= 0 || poll(&descriptor, 1, static_cast<int>(left.count())) <= 0) {
            return nullptr;
        }
    }
    return Reply(static_cast<xcb_record_enable_context_reply_t*>(message));
}

}  // namespace

GrabWatch::GrabWatch(const std::string& displayName)
    : control_(displayName), data_(displayName), context_(xcb_generate_id(control_.get())) {
    xcb_record_range_t range{};
    range.core_requests = {XCB_GRAB_KEY, XCB_GRAB_KEY};
    const xcb_record_client_spec_t clients = XCB_RECORD_CS_FUTURE_CLIENTS;
    const auto created = xcb_record_create_context_checked(control_.get(), context_, 0, 1, 1, &clients, &range);
    const desk::XReply<xcb_generic_error_t> error{xcb_request_check(control_.get(), created)};
    if (error) {
        throw std::runtime_error("the X server does not record requests");
    }
    cookie_ = xcb_record_enable_context(data_.get(), context_);
    xcb_flush(data_.get());
    const auto first = nextMessage(data_, cookie_.sequence, std::chrono::steady_clock::now() + desk::generousDeadline);
    if (!first || first->category != startOfData) {
        throw std::runtime_error("the X server does not begin to record");
    }
}

GrabWatch::~GrabWatch() {
    xcb_record_disable_context(control_.get(), context_);
    xcb_record_free_context(control_.get(), context_);
    control_.synchronise();
}

std::optional<std::chrono::steady_clock::time_point> GrabWatch::waitForGrab(desk::Duration deadline) {
    const auto end = std::chrono::steady_clock::now() + deadline;
    while (const Reply message = nextMessage(data_, cookie_.sequence, end)) {
        if (message->category == fromClient) {
            return std::chrono::steady_clock::now();
        }
    }
    return std::nullopt;
}

}  // namespace vantrel::bench
