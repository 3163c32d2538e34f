// What has come from a real X server is found, however it came.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>

#include "Vantrel/Backends/X11/X11Connection.hpp"
#include "tests/desk/support/Desk.hpp"

namespace vantrel::desk {
namespace {

class Arrivals final : public x11::X11EventListener {
  public:
    void eventArrived(const xcb_generic_event_t& event) override {
        count_ += (event.response_type & 0x7F) == XCB_PROPERTY_NOTIFY ? 1 : 0;
    }
    void handleEvent(const xcb_generic_event_t& /*event*/) override {}

    [[nodiscard]] int count() const { return count_; }

  private:
    int count_ = 0;
};

class ConnectionEvents : public testing::Test {
  protected:
    ConnectionEvents() {
        setenv("DISPLAY", desk.server().displayName().c_str(), 1);
        std::string error;
        connection = x11::X11Connection::open(error);
        if (!connection) {
            throw std::runtime_error(error);
        }
        connection->addListener(arrivals);
        const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(connection->get(), connection->root(), XCB_CW_EVENT_MASK, &mask);
        waitForAReply();
    }

    /// Whatever is there by then is read with the reply.
    void waitForAReply() {
        std::free(xcb_get_input_focus_reply(connection->get(), xcb_get_input_focus(connection->get()), nullptr));
    }

    /// Another client's doing, which is in our socket when this returns.
    void changeTheRootWindow(int times) {
        for (int change = 0; change < times; ++change) {
            xcb_change_property(desk.connection().get(), XCB_PROP_MODE_REPLACE, desk.connection().root(),
                                XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0, "");
        }
        desk.connection().synchronise();
    }

    Desk desk{{.hasSessionBus = false, .hasWindowManager = false}};
    Arrivals arrivals;
    std::unique_ptr<x11::X11Connection> connection;
};

TEST_F(ConnectionEvents, drain_nothingCame_takesNothing) {
    connection->drain();
    EXPECT_EQ(arrivals.count(), 0);
    EXPECT_FALSE(connection->hasPendingEvents());
}

TEST_F(ConnectionEvents, drain_oneCameWithAReplyAndOneSince_takesBoth) {
    changeTheRootWindow(1);
    waitForAReply();
    changeTheRootWindow(1);
    connection->drain();
    EXPECT_EQ(arrivals.count(), 2);
}

TEST_F(ConnectionEvents, drain_moreThanOneReadHolds_takesAll) {
    constexpr int many = 200;  // a read takes 128 of them, the socket some 270
    changeTheRootWindow(many);
    connection->drain();
    EXPECT_EQ(arrivals.count(), many);
}

}  // namespace
}  // namespace vantrel::desk
