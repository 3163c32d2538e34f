#pragma once

#include <unistd.h>

#include <functional>
#include <string>
#include <vector>

#include "ChildRun.hpp"
#include "StoreFixture.hpp"

namespace vantrel::desktop {

/// The store in trouble: permissions that stop this user, and what it tells.
class StoreFaultTest : public StoreTest {
  protected:
    StoreFaultTest() { EXPECT_EQ(::chown(directory_.c_str(), unprivilegedUser(), static_cast<gid_t>(-1)), 0); }

    /// Runs the body as a user whom permissions stop, which root's children would not be.
    static void asUser(const std::function<void()>& body) { EXPECT_EQ(runInChild(ChildUser::unprivileged, body), 0); }

    /// What the body writes to stderr.
    static std::string toldBy(const std::function<void()>& body) {
        testing::internal::CaptureStderr();
        body();
        return testing::internal::GetCapturedStderr();
    }

    std::vector<std::string> storedRows() {
        return Outsider(file_).rows("SELECT key, value FROM defaults ORDER BY key");
    }
};

/// What writeTwoValues() leaves, as storedRows() has it.
inline const std::vector<std::string> bothWrites{"mode|manual", "soundEnabled|1"};

inline void writeTwoValues(SQLiteUserDefaults& store) {
    store.setObject(std::string("automatic"), "mode");
    store.setObject(std::string("manual"), "mode");
    store.setBool(true, "soundEnabled");
}

}  // namespace vantrel::desktop
