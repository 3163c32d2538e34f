#pragma once

#include <filesystem>

#include "tests/desk/support/Environment.hpp"
#include "tests/desk/support/TemporaryDirectory.hpp"

namespace vantrel::desk {

/// A person's home and runtime directories, empty at first.
class Home {
  public:
    Home();

    /// Points HOME and the XDG directories here.
    void enter(Environment& environment) const;

    [[nodiscard]] std::filesystem::path path() const { return directory_.path(); }
    [[nodiscard]] std::filesystem::path configuration() const { return directory_.path() / "config"; }

    /// Where the agent keeps its store.
    [[nodiscard]] std::filesystem::path storeFile() const { return configuration() / "vantrel" / "defaults.sqlite3"; }

  private:
    TemporaryDirectory directory_;
};

}  // namespace vantrel::desk
