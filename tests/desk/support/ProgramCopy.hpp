#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/desk/support/TemporaryDirectory.hpp"

namespace vantrel::desk {

/// A copy of the program under test, for tests of what happens when an upgrade replaces it.
class ProgramCopy {
  public:
    ProgramCopy();

    [[nodiscard]] std::filesystem::path path() const { return directory_.path() / "vantrel"; }

    /// What a desk is to wrap the agent in to have this copy run.
    [[nodiscard]] std::vector<std::string> wrapper() const {
        return {"sh", "-c", "exec " + path().native() + R"( "$@")"};
    }

    /// Puts another copy into its place as a package manager does: written beside it, then renamed.
    void replace() const;

    /// Whether that process runs the file that is in this place now.
    [[nodiscard]] bool isRunBy(pid_t process) const;

  private:
    TemporaryDirectory directory_{"program"};
};

}  // namespace vantrel::desk
