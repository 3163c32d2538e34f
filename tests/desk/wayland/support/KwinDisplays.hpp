#pragma once

#include <kde-output-device-v2.h>
#include <kde-output-management-v2.h>

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/desk/wayland/support/CompositorProcess.hpp"
#include "tests/desk/wayland/support/WaylandClient.hpp"

struct kde_output_device_registry_v2;

namespace vantrel::desk {

/// A person's program for the displays of a private KWin, which are all of one size.
class KwinDisplays {
  public:
    using NumberedOutputs = std::vector<std::pair<std::size_t, PrivateOutput>>;

    explicit KwinDisplays(const std::filesystem::path& socket);
    ~KwinDisplays();
    KwinDisplays(const KwinDisplays&) = delete;
    KwinDisplays& operator=(const KwinDisplays&) = delete;

    /// Gives them the places, scales and transforms from the first one on, which becomes the main one. All are of
    /// width x height pixels: what is to have another mode gets a scale that makes it as large in points. All of it
    /// moves so far that no place is negative. Throws when KWin refuses, or when a mode has another shape.
    void arrange(const std::vector<PrivateOutput>& outputs, int width, int height);
    /// The same with any of them, by their numbers from 0 on; all others are off then.
    void show(const NumberedOutputs& outputs, int width, int height);
    /// Takes the display of that number, from 0 on, out of the layout; false when KWin refuses.
    [[nodiscard]] bool switchOff(std::size_t number);

  private:
    struct Callbacks;
    struct Device {
        std::vector<kde_output_device_mode_v2*> modes;  ///< of no use here, but ours
        kde_output_device_v2* handle = nullptr;
        std::string name;
    };

    void add(kde_output_device_v2* handle);
    /// Asks for these, of which the first is to be the main one.
    void place(kde_output_configuration_v2* changes, const NumberedOutputs& outputs, int width, int height) const;
    void offered(std::uint32_t name, std::string_view interface, std::uint32_t version);
    /// That with this number, from 0 on, by their names.
    [[nodiscard]] kde_output_device_v2* device(std::size_t number) const;
    [[nodiscard]] bool apply(kde_output_configuration_v2* changes);

    WaylandClient client_;
    kde_output_management_v2* management_ = nullptr;
    kde_output_device_registry_v2* registry_ = nullptr;  ///< which tells of the displays in newer versions
    std::vector<std::unique_ptr<Device>> devices_;
    bool isAnswered_ = false;
    bool isApplied_ = false;
};

}  // namespace vantrel::desk
