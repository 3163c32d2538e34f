#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

namespace vantrel::desk {

/// The process of that program that the process has started; none while there is none.
std::optional<pid_t> helperOf(pid_t process, const std::string& program);

/// The process that draws on the screen for that process; none while there is none.
inline std::optional<pid_t> overlayOf(pid_t process) {
    return helperOf(process, "vantrel-overlay");
}

}  // namespace vantrel::desk
