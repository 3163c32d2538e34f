#include "Vantrel/Backends/X11/X11Pointer.hpp"

namespace vantrel::x11 {

std::optional<CGEvent> X11Pointer::CGEventCreate() {
    screen_.synchronize();
    if (const auto location = screen_.pointer()) {
        return CGEvent{*location};
    }
    return std::nullopt;
}

}  // namespace vantrel::x11
