#include "Vantrel/Backends/X11/Tray/TrayWindow.hpp"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace vantrel::x11 {

namespace {

constexpr std::uint32_t requestDock = 0;   // of the System Tray protocol's opcodes
constexpr std::uint32_t xembedMapped = 1;  // of XEmbed's flags

/// The visual that the tray wants its icons to have, else the root window's.
Visual trayVisual(const X11Connection& connection, xcb_window_t manager) {
    const auto cookie = xcb_get_property(connection.get(), 0, manager, connection.atom("_NET_SYSTEM_TRAY_VISUAL"),
                                         XCB_ATOM_VISUALID, 0, 1);
    const auto property = adopt(xcb_get_property_reply(connection.get(), cookie, nullptr));
    const auto visualOf = [&connection](xcb_visualid_t identifier) {
        return findVisual(connection.screen(),
                          [identifier](const Visual& visual) { return visual.type->visual_id == identifier; });
    };
    Visual wanted;
    if (property && xcb_get_property_value_length(property.get()) == sizeof(xcb_visualid_t)) {
        wanted = visualOf(*static_cast<const xcb_visualid_t*>(xcb_get_property_value(property.get())));
    }
    return wanted.type != nullptr ? wanted : visualOf(connection.screen().root_visual);
}

void setText(const X11Connection& connection, xcb_window_t window, const char* property, const char* type,
             std::string_view text) {
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, window, connection.atom(property),
                        connection.atom(type), 8, static_cast<std::uint32_t>(text.size()), text.data());
}

}  // namespace

TrayWindow::TrayWindow(X11Connection& connection, xcb_window_t manager)
    : connection_(connection), window_(xcb_generate_id(connection.get())) {
    createWindow(manager);
    askToDock(manager);
}

TrayWindow::~TrayWindow() {
    xcb_destroy_window(connection_.get(), window_);
    if (colormap_ != XCB_NONE) {
        xcb_free_colormap(connection_.get(), colormap_);
    }
    xcb_flush(connection_.get());
}

void TrayWindow::createWindow(xcb_window_t manager) {
    xcb_connection_t* connection = connection_.get();
    const Visual visual = trayVisual(connection_, manager);
    depth_ = visual.depth;
    colormap_ = xcb_generate_id(connection);
    xcb_create_colormap(connection, XCB_COLORMAP_ALLOC_NONE, colormap_, connection_.root(), visual.type->visual_id);
    const std::uint32_t values[] = {0, 0, XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_STRUCTURE_NOTIFY, colormap_};
    xcb_create_window(connection, depth_, window_, connection_.root(), 0, 0, firstSize, firstSize, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, visual.type->visual_id,
                      XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP, values);
    setText(connection_, window_, "_NET_WM_NAME", "UTF8_STRING", "Vantrel");
    setText(connection_, window_, "WM_NAME", "STRING", "Vantrel");
    askForSquare();
    setText(connection_, window_, "WM_CLASS", "STRING", std::string_view("vantrel\0Vantrel\0", 16));
    const std::array<std::uint32_t, 2> embedding{0, xembedMapped};
    const xcb_atom_t information = connection_.atom("_XEMBED_INFO");
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window_, information, information, 32, embedding.size(),
                        embedding.data());
}

void TrayWindow::askToDock(xcb_window_t manager) {
    sendClientMessage(connection_.get(), manager, XCB_EVENT_MASK_NO_EVENT, manager,
                      connection_.atom("_NET_SYSTEM_TRAY_OPCODE"), {XCB_CURRENT_TIME, requestDock, window_});
}

// Some trays cut their icons off.
int TrayWindow::visibleWidth() const {
    return std::min(width_, parentWidth_);
}

// ICCCM's WM_NORMAL_HINTS: some trays go by the least size (trayer leaves one pixel without it), others by the
// window's.
void TrayWindow::askForSquare() {
    const auto side = static_cast<std::uint32_t>(height_);
    constexpr std::uint32_t hasLeastSize = 1U << 4U;
    std::array<std::uint32_t, 18> hints{};
    hints[0] = hasLeastSize;
    hints[5] = side;
    hints[6] = side;
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, window_, XCB_ATOM_WM_NORMAL_HINTS,
                        XCB_ATOM_WM_SIZE_HINTS, 32, hints.size(), hints.data());
    xcb_configure_window(connection_.get(), window_, XCB_CONFIG_WINDOW_WIDTH, &side);
}

TrayWindow::Change TrayWindow::handleEvent(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7FU) {
        case XCB_BUTTON_PRESS: {
            const auto button = reinterpret_cast<const xcb_button_press_event_t&>(event).detail;
            if (button != XCB_BUTTON_INDEX_1 && button != XCB_BUTTON_INDEX_3) {
                return Change::none;
            }
            // The press grabs the pointer for this client; the menu is another's.
            xcb_ungrab_pointer(connection_.get(), XCB_CURRENT_TIME);
            xcb_flush(connection_.get());
            return Change::pressed;
        }
        case XCB_REPARENT_NOTIFY: {
            const auto& reparent = reinterpret_cast<const xcb_reparent_notify_event_t&>(event);
            return reparent.window == window_ ? reparented(reparent.parent) : Change::none;
        }
        case XCB_CONFIGURE_NOTIFY:
            return configured(reinterpret_cast<const xcb_configure_notify_event_t&>(event));
        case XCB_MAP_NOTIFY:
            // What shines through is known only now.
            return reinterpret_cast<const xcb_map_notify_event_t&>(event).window == window_ && isEmbedded()
                       ? Change::resized
                       : Change::none;
        case XCB_DESTROY_NOTIFY:
            return reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == window_ ? Change::released
                                                                                                : Change::none;
        default:
            return Change::none;
    }
}

TrayWindow::Change TrayWindow::reparented(xcb_window_t parent) {
    if (parent == connection_.root()) {
        // A tray that ends leaves the window on the bare screen.
        return isEmbedded() ? Change::released : Change::none;
    }
    parent_ = parent;
    const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_.get(), parent_, XCB_CW_EVENT_MASK, &events);
    const auto geometry =
        adopt(xcb_get_geometry_reply(connection_.get(), xcb_get_geometry(connection_.get(), parent_), nullptr));
    parentWidth_ = geometry ? geometry->width : 0;
    return Change::embedded;
}

TrayWindow::Change TrayWindow::configured(const xcb_configure_notify_event_t& event) {
    if (event.window == parent_ && parent_ != XCB_NONE) {
        parentWidth_ = event.width;
        return Change::resized;
    }
    if (event.window == window_ && (event.width != width_ || event.height != height_)) {
        width_ = event.width;
        if (std::exchange(height_, event.height) != event.height) {
            askForSquare();
        }
        return isEmbedded() ? Change::resized : Change::none;
    }
    return Change::none;
}

void TrayWindow::paintIcon() {
    const TrayImage icon = trayIconImage(width_, height_, visibleWidth());
    setBackground(depth_ == 32 ? icon : blended(icon, background()));
}

TrayImage TrayWindow::background() {
    constexpr std::uint32_t grey = 0xFF808080;
    TrayImage image{.width = width_, .height = height_, .pixels = {}};
    image.pixels.assign(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_), grey);
    xcb_connection_t* connection = connection_.get();
    const std::uint32_t parentRelative = XCB_BACK_PIXMAP_PARENT_RELATIVE;
    xcb_change_window_attributes(connection, window_, XCB_CW_BACK_PIXMAP, &parentRelative);
    xcb_clear_area(connection, 0, window_, 0, 0, 0, 0);
    const auto reply = adopt(
        xcb_get_image_reply(connection,
                            xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, window_, 0, 0,
                                          static_cast<std::uint16_t>(width_), static_cast<std::uint16_t>(height_), ~0U),
                            nullptr));
    // A window that is not on the screen has no picture; grey goes with anything for that moment.
    const std::size_t bytes = image.pixels.size() * sizeof(std::uint32_t);
    if (reply && static_cast<std::size_t>(xcb_get_image_data_length(reply.get())) == bytes) {
        const auto* data = reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(reply.get()));
        image.pixels.assign(data, data + image.pixels.size());
    }
    return image;
}

void TrayWindow::setBackground(const TrayImage& image) {
    xcb_connection_t* connection = connection_.get();
    const auto width = static_cast<std::uint16_t>(image.width);
    const auto height = static_cast<std::uint16_t>(image.height);
    const xcb_pixmap_t pixmap = xcb_generate_id(connection);
    const xcb_gcontext_t context = xcb_generate_id(connection);
    xcb_create_pixmap(connection, depth_, pixmap, window_, width, height);
    xcb_create_gc(connection, context, pixmap, 0, nullptr);
    xcb_put_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context, width, height, 0, 0, 0, depth_,
                  static_cast<std::uint32_t>(image.pixels.size() * sizeof(std::uint32_t)),
                  reinterpret_cast<const std::uint8_t*>(image.pixels.data()));
    // The server keeps it as the window's background: there is nothing to repaint.
    xcb_change_window_attributes(connection, window_, XCB_CW_BACK_PIXMAP, &pixmap);
    xcb_clear_area(connection, 0, window_, 0, 0, 0, 0);
    xcb_free_gc(connection, context);
    xcb_free_pixmap(connection, pixmap);
}

}  // namespace vantrel::x11
