#include "Vantrel/Agent/SessionChoice.hpp"

#include "Vantrel/Backends/X11/X11Session.hpp"

#include <cstdlib>

namespace vantrel {

namespace {

bool isSet(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

}  // namespace

std::unique_ptr<DisplaySession> chooseDisplaySession(std::string& error) {
    if (!isSet("DISPLAY") && isSet("WAYLAND_DISPLAY")) {
        error = "this is a Wayland session, whose pointer Vantrel cannot move; log in to an X11 session";
        return nullptr;
    }
    return x11::X11Session::connect(error);
}

}  // namespace vantrel
