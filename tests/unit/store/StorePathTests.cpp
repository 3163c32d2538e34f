#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "Vantrel/Desktop/Store/StoreFiles.hpp"

namespace vantrel::desktop {
namespace {

/// Sets or unsets a variable of the environment until it is destroyed.
class EnvironmentVariable {
  public:
    EnvironmentVariable(const char* name, const char* value) : name_(name) {
        if (const char* old = std::getenv(name)) {
            old_ = old;
        }
        set(value);
    }
    ~EnvironmentVariable() { set(old_ ? old_->c_str() : nullptr); }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

  private:
    void set(const char* value) {
        if (value == nullptr) {
            ::unsetenv(name_);
        } else {
            ::setenv(name_, value, 1);
        }
    }

    const char* name_;
    std::optional<std::string> old_;
};

struct PathCase {
    const char* configHome;
    const char* home;
    std::optional<std::filesystem::path> expected;
};

TEST(StorePath, defaultStorePath_environment_followsTheBaseDirectoryRules) {
    const std::vector<PathCase> cases{
        {"/config", "/home/p", "/config/vantrel/defaults.sqlite3"},
        {"/config/", "/home/p", "/config/vantrel/defaults.sqlite3"},
        {nullptr, "/home/p", "/home/p/.config/vantrel/defaults.sqlite3"},
        {"", "/home/p", "/home/p/.config/vantrel/defaults.sqlite3"},
        {"relative", "/home/p", "/home/p/.config/vantrel/defaults.sqlite3"},
        {"/config", nullptr, "/config/vantrel/defaults.sqlite3"},
        {nullptr, nullptr, std::nullopt},
        {nullptr, "", std::nullopt},
        {"relative", "relative", std::nullopt},
    };
    for (const PathCase& one : cases) {
        const EnvironmentVariable configHome("XDG_CONFIG_HOME", one.configHome);
        const EnvironmentVariable home("HOME", one.home);
        EXPECT_EQ(defaultStorePath(), one.expected)
            << (one.configHome ? one.configHome : "none") << ", " << (one.home ? one.home : "none");
    }
}

}  // namespace
}  // namespace vantrel::desktop
