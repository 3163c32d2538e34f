#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>

#include "Vantrel/Desktop/Store/StoreConnection.hpp"

namespace vantrel::desktop {

/// The outcome of opening: a connection and all that the table holds, or the code and the reason why there is none. A
/// connection that can only read comes with the reason for that, where it is known.
struct OpenedStore {
    std::unique_ptr<StoreConnection> connection;
    UserDefaults::Values values;
    int status = SQLITE_OK;
    std::string reason;
};

/// Opens the file, which exists, in the best way that its file system allows: with a write-ahead log; else with a
/// rollback journal; else without locks; else for reading only what it holds. Waits so long for others that hold it
/// locked, here and later. `vfs` names one of SQLite's file systems, null being the usual one.
OpenedStore openStore(const std::filesystem::path& path, const char* vfs, std::chrono::milliseconds lockWait);

}  // namespace vantrel::desktop
