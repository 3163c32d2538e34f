#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel::sway {

// What sway's answers and events say (sway-ipc(7)). Whatever is no such text says nothing.

/// Whether each of the commands was carried out.
bool allSucceeded(std::string_view reply);

/// The binding modes, "default" among them.
std::vector<std::string> modesIn(std::string_view reply);

/// The text of the configuration's main file.
std::string configurationIn(std::string_view reply);

/// The configuration's main file.
std::string configurationFileIn(std::string_view reply);

/// What changed, in an event that tells of a change.
std::string changeIn(std::string_view event);

/// The command of the binding that was pressed; none when the event tells of something else.
std::optional<std::string> pressedCommandIn(std::string_view event);

}  // namespace vantrel::sway
