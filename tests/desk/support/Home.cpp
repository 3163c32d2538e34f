#include "tests/desk/support/Home.hpp"

#include <array>
#include <utility>

namespace vantrel::desk {

namespace {

constexpr std::array<std::pair<const char*, const char*>, 5> directories = {{{"XDG_CONFIG_HOME", "config"},
                                                                             {"XDG_DATA_HOME", "data"},
                                                                             {"XDG_CACHE_HOME", "cache"},
                                                                             {"XDG_STATE_HOME", "state"},
                                                                             {"XDG_RUNTIME_DIR", "runtime"}}};

}  // namespace

Home::Home() : directory_("home") {
    for (const auto& [variable, name] : directories) {
        std::filesystem::create_directory(directory_.path() / name);
        std::filesystem::permissions(directory_.path() / name, std::filesystem::perms::owner_all);
    }
}

void Home::enter(Environment& environment) const {
    environment.set("HOME", directory_.path().native());
    for (const auto& [variable, name] : directories) {
        environment.set(variable, (directory_.path() / name).native());
    }
    // Where the build counts lines: a killed program's counts are broken, and the next would complain of them on
    // stderr.
    environment.set("GCOV_PREFIX", (directory_.path() / "line-counts").native());
}

}  // namespace vantrel::desk
