#pragma once

#include <glib.h>

#include <string>

namespace vantrel::desktop {

/// How a panel's toolkit reads the names of keys: GTK by X's names ("comma"), Qt by what is printed on them (",").
enum class KeyHintStyle { x11Names, characters };

/// The menu property "shortcut" for a key pressed with the primary modifier, as a floating value.
GVariant* keyHint(const std::string& keyEquivalent, KeyHintStyle style);

}  // namespace vantrel::desktop
