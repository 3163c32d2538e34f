#pragma once

#include <filesystem>

namespace vantrel::desktop {

/// What became of a checkpoint.
struct CheckpointOutcome {
    int status = 0;            ///< SQLite's extended result code
    bool startedAnew = false;  ///< the log begins anew, and its header is on the disk
};

/// Moves the log into the database over a connection of its own, and then starts the log anew with a first commit that
/// changes nothing, because the first commit of a log waits for the disk. Others may read and write meanwhile, but for
/// that commit, which holds the writer's lock for as long as it waits. For any thread but the one that runs the loop.
CheckpointOutcome checkpointStore(const std::filesystem::path& path, const char* vfs);

}  // namespace vantrel::desktop
