#pragma once

#include <glib.h>

#include <string>

namespace vantrel::gnome {

/// The extension's name at GNOME Shell.
inline constexpr const char* extensionIdentifier = "vantrel@vantrel.org";

/// Why the extension does not serve, and what a person can do about it, as one line. `information` is the shell's
/// answer to GetExtensionInfo (org.gnome.Shell.Extensions), null for none; `shellVersion` its ShellVersion, such as
/// "48.7", empty when it is not known.
std::string whyExtensionIsMissing(GVariant* information, bool isInstalled, const std::string& shellVersion);

/// Whether its files are where GNOME Shell looks for extensions.
bool isExtensionInstalled();

}  // namespace vantrel::gnome
