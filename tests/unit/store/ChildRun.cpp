#include "ChildRun.hpp"

#include <grp.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

namespace vantrel::desktop {

unsigned unprivilegedUser() {
    constexpr unsigned nobody = 65534;
    return ::geteuid() == 0 ? nobody : ::geteuid();
}

int runInChild(ChildUser user, const std::function<void()>& body) {
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child == 0) {
        if (user == ChildUser::unprivileged && ::geteuid() == 0) {
            const gid_t group = unprivilegedUser();
            if (::setgroups(0, nullptr) != 0 || ::setgid(group) != 0 || ::setuid(unprivilegedUser()) != 0) {
                ::_exit(99);
            }
        }
        body();
        std::fflush(nullptr);
        // Failed expectations of the child are printed by it and reach the parent as this status.
        ::_exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
}

}  // namespace vantrel::desktop
