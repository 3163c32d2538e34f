// Lets Hyprland run without a graphics card, on which it insists. Loaded before its libraries (LD_PRELOAD) this stands
// in for the card: device files that are memory, buffers that are memory, and a renderer without a screen, which is
// Mesa's own software. Only what Hyprland asks of a card on its way there is answered.
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdarg>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

namespace {

template <typename Function>
Function* original(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

bool isOfACard(const char* path) {
    return std::string_view(path).starts_with("/dev/dri/");
}

int card() {
    static const int memory = memfd_create("card", MFD_CLOEXEC);
    return memory;
}

int copyOf(int descriptor) {
    return fcntl(descriptor, F_DUPFD_CLOEXEC, 3);
}

char* newText(const char* text) {
    return strdup(text);
}

}  // namespace

// The library of Hyprland that looks for cards (Aquamarine).
extern "C" int _ZN10Aquamarine16CHeadlessBackend5drmFDEv(void* /*backend*/) {
    return card();
}
extern "C" int _ZN10Aquamarine16CHeadlessBackend15drmRenderNodeFDEv(void* /*backend*/) {
    return card();
}
extern "C" int _ZN10Aquamarine8CBackend13reopenDRMNodeEib(void* /*backend*/, int descriptor, bool /*rendersOnly*/) {
    return copyOf(descriptor);
}

// libdrm: what kind of card it is.
struct DrmDevice {
    char** nodes;
    int availableNodes;
    int busType;
    void* bus;
    void* device;
};
struct DrmVersion {
    std::array<int, 3> numbers;
    int nameLength;
    char* name;
    int dateLength;
    char* date;
    int descriptionLength;
    char* description;
};

namespace {

DrmDevice* device() {
    static std::string primary = "/dev/dri/card0";
    static std::string control = "/dev/dri/controlD64";
    static std::string renderer = "/dev/dri/renderD128";
    static std::array<char*, 3> nodes{primary.data(), control.data(), renderer.data()};
    static std::array<long, 64> details{};
    static DrmDevice only{nodes.data(), 1 | 4, 2, details.data(), details.data()};
    return &only;
}

}  // namespace

extern "C" {

int drmGetDevice(int /*descriptor*/, DrmDevice** found) {
    *found = device();
    return 0;
}
int drmGetDevice2(int /*descriptor*/, std::uint32_t /*flags*/, DrmDevice** found) {
    *found = device();
    return 0;
}
int drmGetDeviceFromDevId(dev_t /*number*/, std::uint32_t /*flags*/, DrmDevice** found) {
    *found = device();
    return 0;
}
void drmFreeDevice(DrmDevice** freed) {
    *freed = nullptr;
}
int drmDevicesEqual(DrmDevice* /*one*/, DrmDevice* /*other*/) {
    return 1;
}
int drmGetCap(int /*descriptor*/, std::uint64_t capability, std::uint64_t* value) {
    constexpr std::uint64_t prime = 0x5;
    constexpr std::uint64_t modifiers = 0x10;
    *value = capability == prime ? 3 : capability == modifiers ? 1 : 0;
    return 0;
}
int drmSetClientCap(int /*descriptor*/, std::uint64_t /*capability*/, std::uint64_t /*value*/) {
    return 0;
}
int drmGetNodeTypeFromFd(int /*descriptor*/) {
    constexpr int renderer = 2;
    return renderer;
}
char* drmGetRenderDeviceNameFromFd(int /*descriptor*/) {
    return newText("/dev/dri/renderD128");
}
char* drmGetPrimaryDeviceNameFromFd(int /*descriptor*/) {
    return newText("/dev/dri/card0");
}
char* drmGetDeviceNameFromFd2(int /*descriptor*/) {
    return newText("/dev/dri/card0");
}
DrmVersion* drmGetVersion(int /*descriptor*/) {
    static std::string name = "none";
    static DrmVersion version{{1, 0, 0}, 4, name.data(), 4, name.data(), 4, name.data()};
    return &version;
}
void drmFreeVersion(DrmVersion* /*version*/) {}
int drmIsKMS(int /*descriptor*/) {
    return 0;
}
int drmPrimeFDToHandle(int /*card*/, int descriptor, std::uint32_t* handle) {
    struct stat status {};
    fstat(descriptor, &status);
    *handle = static_cast<std::uint32_t>(status.st_ino);
    return 0;
}
int drmCloseBufferHandle(int /*descriptor*/, std::uint32_t /*handle*/) {
    return 0;
}
}

// libgbm: buffers that the card would hold.
struct GbmDevice {
    int descriptor;
};
struct GbmBuffer {
    GbmDevice* device;
    std::uint32_t width;
    std::uint32_t height;
    std::uint32_t format;
    std::uint32_t stride;
    int memory;
    void* content;
    std::size_t size;
};

extern "C" {

GbmDevice* gbm_create_device(int descriptor) {
    return std::make_unique<GbmDevice>(GbmDevice{descriptor}).release();
}
void gbm_device_destroy(GbmDevice* device) {
    const std::unique_ptr<GbmDevice> destroyed(device);
}
int gbm_device_get_fd(GbmDevice* device) {
    return device->descriptor;
}
const char* gbm_device_get_backend_name(GbmDevice* /*device*/) {
    return "none";
}
GbmBuffer* gbm_bo_create(GbmDevice* device, std::uint32_t width, std::uint32_t height, std::uint32_t format,
                         std::uint32_t /*flags*/) {
    const std::uint32_t stride = (width * 4 + 255) & ~255U;
    const std::size_t size = (std::size_t{stride} * ((height + 3) & ~3U) + 65536 + 4095) & ~std::size_t{4095};
    const int memory = memfd_create("buffer", MFD_CLOEXEC | MFD_ALLOW_SEALING);
    if (ftruncate(memory, static_cast<off_t>(size)) != 0) {
        return nullptr;
    }
    return std::make_unique<GbmBuffer>(GbmBuffer{device, width, height, format, stride, memory, nullptr, size})
        .release();
}
GbmBuffer* gbm_bo_create_with_modifiers(GbmDevice* device, std::uint32_t width, std::uint32_t height,
                                        std::uint32_t format, const std::uint64_t* /*modifiers*/, unsigned /*count*/) {
    return gbm_bo_create(device, width, height, format, 0);
}
GbmBuffer* gbm_bo_create_with_modifiers2(GbmDevice* device, std::uint32_t width, std::uint32_t height,
                                         std::uint32_t format, const std::uint64_t* /*modifiers*/, unsigned /*count*/,
                                         std::uint32_t /*flags*/) {
    return gbm_bo_create(device, width, height, format, 0);
}
void gbm_bo_destroy(GbmBuffer* buffer) {
    const std::unique_ptr<GbmBuffer> destroyed(buffer);
    close(buffer->memory);
    if (buffer->content != nullptr) {
        munmap(buffer->content, buffer->size);
    }
}
int gbm_bo_get_fd(GbmBuffer* buffer) {
    return copyOf(buffer->memory);
}
int gbm_bo_get_fd_for_plane(GbmBuffer* buffer, int /*plane*/) {
    return copyOf(buffer->memory);
}
std::uint64_t gbm_bo_get_modifier(GbmBuffer* /*buffer*/) {
    return 0;
}
std::uint32_t gbm_bo_get_offset(GbmBuffer* /*buffer*/, int /*plane*/) {
    return 0;
}
int gbm_bo_get_plane_count(GbmBuffer* /*buffer*/) {
    return 1;
}
std::uint32_t gbm_bo_get_stride_for_plane(GbmBuffer* buffer, int /*plane*/) {
    return buffer->stride;
}
void* gbm_bo_map(GbmBuffer* buffer, std::uint32_t /*x*/, std::uint32_t /*y*/, std::uint32_t /*width*/,
                 std::uint32_t /*height*/, std::uint32_t /*flags*/, std::uint32_t* stride, void** mapping) {
    if (buffer->content == nullptr) {
        buffer->content = mmap(nullptr, buffer->size, PROT_READ | PROT_WRITE, MAP_SHARED, buffer->memory, 0);
    }
    *stride = buffer->stride;
    *mapping = buffer;
    return buffer->content;
}
void gbm_bo_unmap(GbmBuffer* /*buffer*/, void* /*mapping*/) {}
}

// EGL: the platform without a screen in the place of the card's.
namespace {

using GetPlatformDisplay = void*(unsigned platform, void* native, const void* attributes);

void* eglFunction(const char* name) {
    static auto* const getProcAddress = original<void*(const char*)>("eglGetProcAddress");
    return getProcAddress(name);
}

void* platformDisplay(unsigned platform, void* native, const void* attributes) {
    constexpr unsigned ofCards = 0x31D7;
    constexpr unsigned ofDevices = 0x313F;
    constexpr unsigned withoutScreen = 0x31DD;
    auto* const get = reinterpret_cast<GetPlatformDisplay*>(eglFunction("eglGetPlatformDisplayEXT"));
    const bool isStoodInFor = platform == ofCards || platform == ofDevices;
    return isStoodInFor ? get(withoutScreen, nullptr, nullptr) : get(platform, native, attributes);
}

unsigned noDevices(int /*most*/, void** /*devices*/, int* count) {
    *count = 0;
    return 1;
}

}  // namespace

extern "C" void* eglGetProcAddress(const char* name) {
    const std::string_view wanted(name);
    if (wanted == "eglGetPlatformDisplay" || wanted == "eglGetPlatformDisplayEXT") {
        return reinterpret_cast<void*>(platformDisplay);
    }
    return wanted == "eglQueryDevicesEXT" ? reinterpret_cast<void*>(noDevices) : eglFunction(name);
}

extern "C" const char* eglQueryString(void* display, int name) {
    static auto* const query = original<const char*(void*, int)>("eglQueryString");
    constexpr int extensions = 0x3055;
    const char* const text = query(display, name);
    if (name != extensions) {
        return text;
    }
    static std::array<std::string, 2> answers;
    std::string& answer = answers[display == nullptr ? 0 : 1];
    answer = std::string(text == nullptr ? "" : text) + " EGL_KHR_platform_gbm EGL_MESA_platform_gbm";
    return answer.c_str();
}

// The C library: the card's device files.
extern "C" int stat(const char* path, struct stat* status) {
    static auto* const ask = original<int(const char*, struct stat*)>("stat");
    if (!isOfACard(path)) {
        return ask(path, status);
    }
    *status = {};
    status->st_mode = S_IFCHR | 0666;
    status->st_rdev = (226U << 8U) | 128U;
    return 0;
}

namespace {

template <typename... Mode>
int openAs(const char* function, const char* path, int flags, Mode... mode) {
    return isOfACard(path) ? copyOf(card()) : original<int(const char*, int, ...)>(function)(path, flags, mode...);
}

}  // namespace

extern "C" int open(const char* path, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const auto mode = va_arg(arguments, mode_t);
    va_end(arguments);
    return openAs("open", path, flags, mode);
}
extern "C" int open64(const char* path, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const auto mode = va_arg(arguments, mode_t);
    va_end(arguments);
    return openAs("open64", path, flags, mode);
}
