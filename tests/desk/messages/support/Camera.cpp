#include "tests/desk/messages/support/Camera.hpp"

#include <unistd.h>
#include <wlr-screencopy-unstable-v1.h>

#include <algorithm>
#include <stdexcept>

namespace vantrel::desk {

namespace {

struct DestroyFrame {
    void operator()(zwlr_screencopy_frame_v1* frame) const { zwlr_screencopy_frame_v1_destroy(frame); }
};

/// What the compositor says about a picture that was asked for.
struct Answer {
    std::uint32_t format = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t stride = 0;
    std::uint32_t flags = 0;
    bool isReady = false;
    bool hasFailed = false;

    static Answer& of(void* data) { return *static_cast<Answer*>(data); }
    static void buffer(void* data, zwlr_screencopy_frame_v1* /*frame*/, std::uint32_t format, std::uint32_t width,
                       std::uint32_t height, std::uint32_t stride) {
        of(data).format = format;
        of(data).width = width;
        of(data).height = height;
        of(data).stride = stride;
    }
    static void setFlags(void* data, zwlr_screencopy_frame_v1* /*frame*/, std::uint32_t flags) {
        of(data).flags = flags;
    }
    static void ready(void* data, zwlr_screencopy_frame_v1* /*frame*/, std::uint32_t /*high*/, std::uint32_t /*low*/,
                      std::uint32_t /*nanoseconds*/) {
        of(data).isReady = true;
    }
    static void failed(void* data, zwlr_screencopy_frame_v1* /*frame*/) { of(data).hasFailed = true; }

    static constexpr zwlr_screencopy_frame_v1_listener listener{
        .buffer = buffer, .flags = setFlags, .ready = ready, .failed = failed};
};

}  // namespace

struct Camera::Output {
    wayland::WaylandPointer<wl_output> handle;
    std::string name;

    static void setName(void* data, wl_output* /*output*/, const char* name) {
        static_cast<Output*>(data)->name = name;
    }
    template <typename... Arguments>
    static void unused(void* /*data*/, Arguments... /*arguments*/) {}

    static constexpr wl_output_listener listener{
        .geometry = unused, .mode = unused, .done = unused, .scale = unused, .name = setName, .description = unused};
};

Camera::Camera(const std::filesystem::path& socket)
    : client_(socket, [this](std::uint32_t name, std::string_view interface, std::uint32_t /*version*/) {
          offered(name, interface);
      }) {
    client_.synchronise();
    client_.synchronise();
    if (!shm_ || manager_ == nullptr) {
        throw std::runtime_error("the compositor gives no pictures");
    }
}

Camera::~Camera() {
    zwlr_screencopy_manager_v1_destroy(manager_);
}

void Camera::offered(std::uint32_t name, std::string_view interface) {
    if (interface == wl_shm_interface.name) {
        shm_.reset(client_.bind<wl_shm>(name, wl_shm_interface, 1));
    } else if (interface == zwlr_screencopy_manager_v1_interface.name) {
        manager_ = client_.bind<zwlr_screencopy_manager_v1>(name, zwlr_screencopy_manager_v1_interface, 1);
    } else if (interface == wl_output_interface.name) {
        outputs_.push_back(std::make_unique<Output>());
        outputs_.back()->handle.reset(client_.bind<wl_output>(name, wl_output_interface, 4));
        wl_output_add_listener(outputs_.back()->handle.get(), &Output::listener, outputs_.back().get());
    }
}

Picture Camera::take(const std::string& name) {
    client_.synchronise();
    const auto output =
        std::find_if(outputs_.begin(), outputs_.end(), [&](const auto& each) { return each->name == name; });
    if (output == outputs_.end()) {
        throw std::runtime_error("no such output: " + name);
    }
    Answer answer;
    const std::unique_ptr<zwlr_screencopy_frame_v1, DestroyFrame> frame(
        zwlr_screencopy_manager_v1_capture_output(manager_, 0, (*output)->handle.get()));
    zwlr_screencopy_frame_v1_add_listener(frame.get(), &Answer::listener, &answer);
    while (answer.stride == 0 && !answer.hasFailed) {
        client_.waitForEvents();
    }
    const std::size_t size = std::size_t{answer.stride} * answer.height;
    const FileDescriptor file = memoryFile(size);
    const auto signedSize = [](std::size_t number) { return static_cast<std::int32_t>(number); };
    const wayland::WaylandPointer<wl_shm_pool> pool(wl_shm_create_pool(shm_.get(), file.get(), signedSize(size)));
    const wayland::WaylandPointer<wl_buffer> buffer(wl_shm_pool_create_buffer(
        pool.get(), 0, signedSize(answer.width), signedSize(answer.height), signedSize(answer.stride), answer.format));
    zwlr_screencopy_frame_v1_copy(frame.get(), buffer.get());
    while (!answer.isReady && !answer.hasFailed) {
        client_.waitForEvents();
    }
    if (answer.hasFailed || answer.flags != 0) {
        throw std::runtime_error("no picture of " + name);
    }
    Picture picture{.width = static_cast<int>(answer.width), .height = static_cast<int>(answer.height), .pixels = {}};
    picture.pixels.resize(std::size_t{answer.width} * answer.height);
    for (std::size_t row = 0; row < answer.height; ++row) {
        const std::size_t bytes = answer.width * sizeof(std::uint32_t);
        if (pread(file.get(), &picture.pixels[row * answer.width], bytes, static_cast<off_t>(row * answer.stride)) !=
            static_cast<ssize_t>(bytes)) {
            throw std::runtime_error("a picture cannot be read");
        }
    }
    return picture;
}

std::optional<overlay::Rect> difference(const Picture& before, const Picture& after,
                                        const std::vector<overlay::Rect>& passedOver) {
    int left = after.width;
    int top = after.height;
    int right = -1;
    int bottom = -1;
    for (int y = 0; y < after.height; ++y) {
        for (int x = 0; x < after.width; ++x) {
            const bool isPassedOver = std::any_of(passedOver.begin(), passedOver.end(), [x, y](const auto& rect) {
                return x >= rect.x && x < rect.x + rect.width && y >= rect.y && y < rect.y + rect.height;
            });
            if (!isPassedOver && before.at(x, y) != after.at(x, y)) {
                left = std::min(left, x);
                right = std::max(right, x);
                top = std::min(top, y);
                bottom = std::max(bottom, y);
            }
        }
    }
    if (right < 0) {
        return std::nullopt;
    }
    return overlay::Rect{.x = left, .y = top, .width = right - left + 1, .height = bottom - top + 1};
}

}  // namespace vantrel::desk
