#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "helpers/messages/Rect.hpp"
#include "tests/desk/wayland/support/WaylandClient.hpp"

struct zwlr_screencopy_manager_v1;

namespace vantrel::desk {

/// What an output shows, in pixels.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    [[nodiscard]] std::uint32_t at(int x, int y) const { return pixels[static_cast<std::size_t>(y * width + x)]; }
};

/// The smallest rectangle that holds all that differs outside of those that are passed over; none when nothing does.
/// The pictures are of one size.
std::optional<overlay::Rect> difference(const Picture& before, const Picture& after,
                                        const std::vector<overlay::Rect>& passedOver = {});

/// Takes pictures of a compositor's outputs.
class Camera {
  public:
    explicit Camera(const std::filesystem::path& socket);
    ~Camera();
    Camera(const Camera&) = delete;
    Camera& operator=(const Camera&) = delete;

    /// What the output of that name shows now; throws when there is none.
    Picture take(const std::string& output);

  private:
    struct Output;

    void offered(std::uint32_t name, std::string_view interface);

    WaylandClient client_;
    wayland::WaylandPointer<wl_shm> shm_;
    zwlr_screencopy_manager_v1* manager_ = nullptr;
    std::vector<std::unique_ptr<Output>> outputs_;
};

}  // namespace vantrel::desk
