#pragma once

#include <filesystem>
#include <string>

namespace vantrel::wayland {

/// Where the kernel shows what is plugged in.
inline constexpr auto kernelDisplayDirectory = "/sys/class/drm";

/// What backend::edidIdentity() makes of the display on that connector, by the kernel's word: Wayland tells of no EDID,
/// and what X11 makes of it must come out the same. Empty where nothing is known. With several graphics cards that have
/// a connector of that name, the first with a display counts.
std::string edidIdentityOfConnector(const std::string& connector,
                                    const std::filesystem::path& directory = kernelDisplayDirectory);

}  // namespace vantrel::wayland
