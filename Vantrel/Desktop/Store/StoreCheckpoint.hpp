#pragma once

#include <filesystem>

#include "Vantrel/Desktop/Store/SQLiteHandles.hpp"

namespace vantrel::desktop {

/// What became of a checkpoint.
struct CheckpointOutcome {
    int status = SQLITE_OK;   ///< SQLite's extended result code
    int pagesInLog = 0;       ///< the log's length when the checkpoint began
    bool isComplete = false;  ///< everything up to there is in the database, and on the disk

    /// Reads the log for as long as it lives. Meanwhile commits go on at the log's end: without it the next one would
    /// begin a log that was moved at its beginning again, and wait for the disk.
    SQLiteDatabase reader;
};

/// Moves the log into the database over connections of its own. Waits for the disk, and locks nobody out: others may
/// read and commit all the while. For any thread but the one that runs the loop.
CheckpointOutcome checkpointStore(const std::filesystem::path& path, const char* vfs);

}  // namespace vantrel::desktop
