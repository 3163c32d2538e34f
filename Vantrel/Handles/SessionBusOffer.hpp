#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

namespace vantrel {

/// Whether there is the address of a session bus to connect to. Without one GLib would start a bus of its own
/// (dbus-launch), which the session did not ask for and which would outlive the agent.
inline bool isSessionBusOffered() {
    const char* const address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    if (address != nullptr && *address != '\0') {
        return true;
    }
    const char* const runtimeDirectory = std::getenv("XDG_RUNTIME_DIR");
    std::error_code ignored;
    return runtimeDirectory != nullptr && std::filesystem::is_socket(std::string(runtimeDirectory) + "/bus", ignored);
}

}  // namespace vantrel
