#include "helpers/messages/Wayland/Pixels.hpp"

#include <sys/mman.h>
#include <unistd.h>

#include <utility>

#include "Vantrel/Handles/FileDescriptor.hpp"
#include "helpers/messages/CairoHandles.hpp"

namespace vantrel::overlay {

namespace {

/// A file's memory in this process.
class Mapping {
  public:
    Mapping(const FileDescriptor& file, std::size_t size)
        : size_(size), memory_(mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, file.get(), 0)) {}
    ~Mapping() {
        if (isThere()) {
            munmap(memory_, size_);
        }
    }
    Mapping(const Mapping&) = delete;
    Mapping& operator=(const Mapping&) = delete;

    [[nodiscard]] bool isThere() const { return memory_ != MAP_FAILED; }
    [[nodiscard]] unsigned char* bytes() const { return static_cast<unsigned char*>(memory_); }

  private:
    std::size_t size_;
    void* memory_;
};

}  // namespace

std::unique_ptr<Pixels> Pixels::draw(wl_shm& shm, int width, int height, const std::function<void(cairo_t*)>& draw) {
    const int stride = cairo_format_stride_for_width(CAIRO_FORMAT_ARGB32, width);
    if (stride <= 0 || height <= 0) {
        return nullptr;
    }
    const int size = stride * height;
    const FileDescriptor file(memfd_create("vantrel-overlay", MFD_CLOEXEC));
    if (!file.isOpen() || ftruncate(file.get(), size) != 0) {
        return nullptr;
    }
    const Mapping memory(file, static_cast<std::size_t>(size));
    if (!memory.isThere()) {
        return nullptr;
    }
    {
        const SurfacePointer surface(
            cairo_image_surface_create_for_data(memory.bytes(), CAIRO_FORMAT_ARGB32, width, height, stride));
        const CairoPointer context(cairo_create(surface.get()));
        draw(context.get());
        cairo_surface_finish(surface.get());
    }
    const Handle<wl_shm_pool> pool(wl_shm_create_pool(&shm, file.get(), size));
    Handle<wl_buffer> buffer(wl_shm_pool_create_buffer(pool.get(), 0, width, height, stride, WL_SHM_FORMAT_ARGB8888));
    return std::unique_ptr<Pixels>(new Pixels(std::move(buffer)));  // NOLINT: private constructor
}

Pixels::Pixels(Handle<wl_buffer> buffer) : buffer_(std::move(buffer)) {
    static constexpr wl_buffer_listener listener{
        .release = [](void* data, wl_buffer* /*buffer*/) { static_cast<Pixels*>(data)->isInUse_ = false; }};
    wl_buffer_add_listener(buffer_.get(), &listener, this);
}

}  // namespace vantrel::overlay
