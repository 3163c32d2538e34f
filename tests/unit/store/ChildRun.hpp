#pragma once

#include <functional>

namespace vantrel::desktop {

enum class ChildUser { same, unprivileged };

/// How a child process ended: its exit status, or minus the number of the signal that ended it.
int runInChild(ChildUser user, const std::function<void()>& body);

/// The user and group that `unprivileged` stands for: this process's own unless it is root.
unsigned unprivilegedUser();

}  // namespace vantrel::desktop
