#pragma once

#include <filesystem>
#include <string>

#include "tests/desk/support/TemporaryDirectory.hpp"

namespace vantrel::desk {

/// A program where the compositor's user may start it; the build's directories need not be open to everybody.
class PersonsProgram {
  public:
    explicit PersonsProgram(const std::filesystem::path& program) : path_(directory_.path() / program.filename()) {
        using std::filesystem::perms;
        std::filesystem::permissions(directory_.path(), perms::owner_all | perms::others_read | perms::others_exec);
        std::filesystem::copy_file(program, path_);
    }
    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    /// An entry for labwc's rc.xml that starts it with the argument.
    [[nodiscard]] std::string binding(const std::string& key, const std::string& argument) const {
        return "<keybind key=\"" + key + "\" onRelease=\"yes\"><action name=\"Execute\" command=\"" + path().native() +
               " " + argument + "\"/></keybind>\n";
    }

  private:
    TemporaryDirectory directory_{"program"};
    std::filesystem::path path_;
};

}  // namespace vantrel::desk
