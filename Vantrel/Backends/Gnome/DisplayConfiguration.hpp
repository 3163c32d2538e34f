#pragma once

#include <glib.h>

#include <vector>

#include "Vantrel/Backends/Wayland/OutputLayout.hpp"

namespace vantrel::gnome {

/// The answer's type of org.gnome.Mutter.DisplayConfig.GetCurrentState.
inline constexpr const char* displayStateType = "(ua((ssss)a(siiddada{sv})a{sv})a(iiduba(ssss)a{sv})a{sv})";

/// The displays that such an answer tells of, in the coordinates that the pointer has: points, or pixels where Mutter's
/// layout mode says so. Of displays that show the same there is one each.
std::vector<wayland::OutputDescription> outputsOf(GVariant* displayState);

}  // namespace vantrel::gnome
