#include "tests/desk/support/ProgramCopy.hpp"

namespace vantrel::desk {

ProgramCopy::ProgramCopy() {
    // KWin looks, as another user, whether the program is there.
    std::filesystem::permissions(directory_.path(), std::filesystem::perms(0755));
    replace();
}

void ProgramCopy::replace() const {
    const std::filesystem::path draft = path().native() + ".new";
    std::filesystem::copy_file(VANTREL_PROGRAM, draft);
    std::filesystem::rename(draft, path());
}

bool ProgramCopy::isRunBy(pid_t process) const {
    // The path of a file that is gone has a mark behind it.
    return std::filesystem::read_symlink("/proc/" + std::to_string(process) + "/exe") == path();
}

}  // namespace vantrel::desk
