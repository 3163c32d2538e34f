#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

#include "Vantrel/Backends/Wayland/KeyBindings.hpp"

namespace vantrel::sway {

/// The keys that a configuration binds (sway(5)), with its variables and includes resolved, in every mode. `text` is
/// that of the main file, as sway has read it; included files are read from the disk. Includes that are made by running
/// a command are left out: nothing is run here.
std::vector<wayland::ConfiguredBinding> bindingsInConfiguration(std::string_view text,
                                                                const std::filesystem::path& mainFile);

}  // namespace vantrel::sway
