#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Vantrel/Backends/Wayland/OutputLayout.hpp"

namespace vantrel::wayfire {

// What wayfire's plugins ipc-rules and command take and say over their socket. Whatever is no such text says nothing.

/// Whether the text tells of an event, and answers no call.
bool isEvent(std::string_view message);

std::string positionCall();
/// Where the pointer is, in the layout.
std::optional<wayland::LayoutPoint> positionIn(std::string_view answer);

std::string methodsCall();
/// Whether the methods that it lists bind keys.
bool canBind(std::string_view answer);

/// Binds what stands in wayfire's own form ("<ctrl> <alt> KEY_D") to an event.
std::string bindCall(const std::string& binding);
/// The number that a binding has got.
std::optional<std::uint64_t> bindingIn(std::string_view answer);
std::string unbindCall(std::uint64_t binding);

/// The number of the binding of which an event tells that it was pressed.
std::optional<std::uint64_t> pressedIn(std::string_view event);

}  // namespace vantrel::wayfire
