#include "Vantrel/Backends/Wayland/CursorSessions.hpp"

#include <memory>
#include <vector>

namespace vantrel::wayland {

namespace {

/// The pointer on one output.
class Session {
  public:
    Session(ext_output_image_capture_source_manager_v1& sources, ext_image_copy_capture_manager_v1& sessions,
            wl_output* output, wl_pointer* pointer)
        : source_(ext_output_image_capture_source_manager_v1_create_source(&sources, output)),
          session_(ext_image_copy_capture_manager_v1_create_pointer_cursor_session(&sessions, source_.get(), pointer)) {
        static constexpr ext_image_copy_capture_cursor_session_v1_listener listener{
            .enter = entered, .leave = left, .position = positioned, .hotspot = unused};
        ext_image_copy_capture_cursor_session_v1_add_listener(session_.get(), &listener, this);
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// In the pixels of the picture; none while the pointer is elsewhere.
    [[nodiscard]] std::optional<LayoutPoint> pixel() const { return isEntered_ ? pixel_ : std::nullopt; }

  private:
    using Handle = ext_image_copy_capture_cursor_session_v1;

    static void entered(void* data, Handle* /*session*/) { static_cast<Session*>(data)->isEntered_ = true; }
    static void left(void* data, Handle* /*session*/) { static_cast<Session*>(data)->isEntered_ = false; }
    static void positioned(void* data, Handle* /*session*/, std::int32_t x, std::int32_t y) {
        static_cast<Session*>(data)->pixel_ = LayoutPoint{static_cast<double>(x), static_cast<double>(y)};
    }
    static void unused(void* /*data*/, Handle* /*session*/, std::int32_t /*x*/, std::int32_t /*y*/) {}

    WaylandPointer<ext_image_capture_source_v1> source_;
    WaylandPointer<Handle> session_;
    bool isEntered_ = false;
    std::optional<LayoutPoint> pixel_;
};

}  // namespace

CursorSessions::CursorSessions(WaylandConnection& connection, const Registry& registry, const Seat& seat)
    : connection_(connection),
      seat_(seat),
      sources_(registry.bindFirst<ext_output_image_capture_source_manager_v1>(
          ext_output_image_capture_source_manager_v1_interface, 1)),
      sessions_(registry.bindFirst<ext_image_copy_capture_manager_v1>(ext_image_copy_capture_manager_v1_interface, 1)) {
}

std::optional<LayoutPoint> CursorSessions::read(std::span<const Output> outputs, Clock::time_point deadline) {
    if (!sources_ || !sessions_ || !seat_.hasPointer()) {
        return std::nullopt;
    }
    std::vector<std::unique_ptr<Session>> sessions;
    for (const Output& output : outputs) {
        sessions.push_back(std::make_unique<Session>(*sources_, *sessions_, output.handle.get(), seat_.pointer()));
    }
    if (!connection_.synchronize(deadline)) {
        return std::nullopt;
    }
    std::optional<LayoutPoint> place;
    for (std::size_t index = 0; index < sessions.size(); ++index) {
        if (const auto pixel = sessions[index]->pixel()) {
            place = placeOfPixel(outputs[index].description, *pixel);
        }
    }
    return place;
}

}  // namespace vantrel::wayland
