#include "tests/desk/wayland/support/KwinDisplays.hpp"

#include <algorithm>
#include <stdexcept>
#include <string_view>

namespace vantrel::desk {

namespace {

/// The scale with which a display of that size is as large, in points, as one of the output's mode with its scale.
double scaleFor(const PrivateOutput& output, int width, int height) {
    const int wantedWidth = std::stoi(output.mode);
    const int wantedHeight = std::stoi(output.mode.substr(output.mode.find('x') + 1));
    if (width * wantedHeight != height * wantedWidth) {
        throw std::runtime_error("KWin's displays are of one shape here");
    }
    return std::stod(output.scale) * width / wantedWidth;
}

}  // namespace

struct KwinDisplays::Callbacks {
    static void applied(void* data, kde_output_configuration_v2* /*changes*/) {
        static_cast<KwinDisplays*>(data)->isAnswered_ = true;
        static_cast<KwinDisplays*>(data)->isApplied_ = true;
    }
    static void failed(void* data, kde_output_configuration_v2* /*changes*/) {
        static_cast<KwinDisplays*>(data)->isAnswered_ = true;
    }
    /// Each version tells more of a display: by the events' names, which all have.
    static int told(const void* /*implementation*/, void* target, std::uint32_t /*code*/, const wl_message* event,
                    wl_argument* arguments) {
        auto& device = *static_cast<Device*>(wl_proxy_get_user_data(static_cast<wl_proxy*>(target)));
        if (event->name == std::string_view("name")) {
            device.name = arguments[0].s;
        } else if (event->name == std::string_view("mode")) {
            // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): that is what the library makes of a new
            // object
            device.modes.push_back(reinterpret_cast<kde_output_device_mode_v2*>(arguments[0].o));
        }
        return 0;
    }

    template <typename... Arguments>
    static void unused(void* /*data*/, Arguments... /*arguments*/) {}

    static constexpr kde_output_configuration_v2_listener configuration = [] {
        kde_output_configuration_v2_listener listener{};
        listener.applied = applied;
        listener.failed = failed;
        return listener;
    }();
};

KwinDisplays::KwinDisplays(const std::filesystem::path& socket)
    : client_(socket, [this](std::uint32_t name, std::string_view interface, std::uint32_t version) {
          offered(name, interface, version);
      }) {
    // The globals, the displays, and what is told of each.
    client_.synchronise();
    client_.synchronise();
    client_.synchronise();
    if (management_ == nullptr) {
        throw std::runtime_error("the compositor's displays cannot be arranged");
    }
    std::sort(devices_.begin(), devices_.end(),
              [](const auto& one, const auto& other) { return one->name < other->name; });
}

KwinDisplays::~KwinDisplays() {
    for (const auto& each : devices_) {
        for (kde_output_device_mode_v2* const mode : each->modes) {
            kde_output_device_mode_v2_destroy(mode);
        }
        kde_output_device_v2_destroy(each->handle);
    }
#ifdef KDE_OUTPUT_DEVICE_REGISTRY_V2_INTERFACE
    if (registry_ != nullptr) {
        kde_output_device_registry_v2_destroy(registry_);
    }
#endif
    kde_output_management_v2_destroy(management_);
}

void KwinDisplays::offered(std::uint32_t name, std::string_view interface, std::uint32_t version) {
    if (interface == kde_output_management_v2_interface.name) {
        management_ =
            client_.bind<kde_output_management_v2>(name, kde_output_management_v2_interface, std::min(version, 3U));
    } else if (interface == kde_output_device_v2_interface.name) {
        add(client_.bind<kde_output_device_v2>(name, kde_output_device_v2_interface, 2));
    }
#ifdef KDE_OUTPUT_DEVICE_REGISTRY_V2_INTERFACE
    constexpr std::uint32_t firstRegistry = 21;
    if (interface == kde_output_device_registry_v2_interface.name) {
        static constexpr kde_output_device_registry_v2_listener listener{
            .finished = Callbacks::unused, .output = [](void* data, auto* /*registry*/, kde_output_device_v2* device) {
                static_cast<KwinDisplays*>(data)->add(device);
            }};
        registry_ =
            client_.bind<kde_output_device_registry_v2>(name, kde_output_device_registry_v2_interface, firstRegistry);
        kde_output_device_registry_v2_add_listener(registry_, &listener, this);
    }
#endif
}

void KwinDisplays::add(kde_output_device_v2* handle) {
    auto& device = devices_.emplace_back(std::make_unique<Device>());
    device->handle = handle;
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): as the library's own functions do
    wl_proxy_add_dispatcher(reinterpret_cast<wl_proxy*>(handle), &Callbacks::told, nullptr, device.get());
}

kde_output_device_v2* KwinDisplays::device(std::size_t number) const {
    return devices_.at(number)->handle;
}

void KwinDisplays::place(kde_output_configuration_v2* changes, const NumberedOutputs& outputs, int width,
                         int height) const {
    const auto byX = [](const auto& one, const auto& other) { return one.second.x < other.second.x; };
    const auto byY = [](const auto& one, const auto& other) { return one.second.y < other.second.y; };
    const int left = std::min_element(outputs.begin(), outputs.end(), byX)->second.x;
    const int top = std::min_element(outputs.begin(), outputs.end(), byY)->second.y;
    std::uint32_t priority = 0;
    for (const auto& [number, output] : outputs) {
        kde_output_configuration_v2_enable(changes, device(number), 1);
        kde_output_configuration_v2_scale(changes, device(number),
                                          wl_fixed_from_double(scaleFor(output, width, height)));
        kde_output_configuration_v2_transform(changes, device(number),
                                              static_cast<std::int32_t>(output.transformNumber()));
        kde_output_configuration_v2_position(changes, device(number), output.x - left, output.y - top);
        kde_output_configuration_v2_set_priority(changes, device(number), ++priority);
    }
}

void KwinDisplays::arrange(const std::vector<PrivateOutput>& outputs, int width, int height) {
    NumberedOutputs numbered;
    for (const PrivateOutput& output : outputs) {
        numbered.emplace_back(numbered.size(), output);
    }
    kde_output_configuration_v2* const changes = kde_output_management_v2_create_configuration(management_);
    place(changes, numbered, width, height);
    if (!apply(changes)) {
        throw std::runtime_error("KWin refuses to arrange its displays so");
    }
}

void KwinDisplays::show(const NumberedOutputs& outputs, int width, int height) {
    kde_output_configuration_v2* const changes = kde_output_management_v2_create_configuration(management_);
    place(changes, outputs, width, height);
    auto priority = static_cast<std::uint32_t>(outputs.size());
    for (std::size_t number = 0; number < devices_.size(); ++number) {
        if (std::none_of(outputs.begin(), outputs.end(), [&](const auto& shown) { return shown.first == number; })) {
            kde_output_configuration_v2_enable(changes, device(number), 0);
            // KWin 5.27 refuses an order that leaves any out.
            kde_output_configuration_v2_set_priority(changes, device(number), ++priority);
        }
    }
    if (!apply(changes)) {
        throw std::runtime_error("KWin refuses to show these displays");
    }
}

bool KwinDisplays::switchOff(std::size_t number) {
    kde_output_configuration_v2* const changes = kde_output_management_v2_create_configuration(management_);
    kde_output_configuration_v2_enable(changes, device(number), 0);
    return apply(changes);
}

bool KwinDisplays::apply(kde_output_configuration_v2* changes) {
    isAnswered_ = false;
    isApplied_ = false;
    kde_output_configuration_v2_add_listener(changes, &Callbacks::configuration, this);
    kde_output_configuration_v2_apply(changes);
    while (!isAnswered_) {
        client_.waitForEvents();
    }
    kde_output_configuration_v2_destroy(changes);
    return isApplied_;
}

}  // namespace vantrel::desk
