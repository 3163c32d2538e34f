#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace vantrel::desktop {

/// Where the person's settings live: $XDG_CONFIG_HOME/vantrel/defaults.sqlite3 when that variable holds an absolute
/// path, else ~/.config/vantrel/defaults.sqlite3. None without a home directory.
std::optional<std::filesystem::path> defaultStorePath();

/// The outcome of a step on the store's files: empty when it went well, else the reason in a few words.
using StoreFileProblem = std::string;

/// Makes the file's directories (mode 0700) and the file itself (0600, empty) where they are missing, and takes the
/// rights of others from a file that is ours. Follows symbolic links, so that `path` then names the real file. Must not
/// be called while the database is open: closing any descriptor of it would drop the locks.
StoreFileProblem prepareStoreFile(std::filesystem::path& path);

/// Whether a write-ahead log with content lies beside a missing or empty database. The database would be opened as an
/// empty one and the log deleted.
bool hasOrphanedLog(const std::filesystem::path& path);

/// Whether the database ends within a page, and no log or journal tells of a change that was under way. What is missing
/// would read as zeros.
bool isCutOff(const std::filesystem::path& path);

/// Whether a write-ahead log with content lies beside the database.
bool hasLogContent(const std::filesystem::path& path);

/// Whether this process may not write the database, although its disk could be written.
bool isClosedToWriting(const std::filesystem::path& path);

/// Whether a write-ahead log or a journal lies beside the database, even an empty one: somebody may have it open.
bool hasJournalBeside(const std::filesystem::path& path);

/// Renames the database and all that belongs to it to a new name in the same directory. Nothing is overwritten.
/// Returns the new name of the database; none when it could not be renamed, or is somebody else's, who alone may write
/// it.
std::optional<std::filesystem::path> setStoreAside(const std::filesystem::path& path);

/// Whether the file lies on a file system that several machines may have mounted: a write-ahead log needs memory that
/// all its users share.
bool isOnNetwork(const std::filesystem::path& path);

/// Whether the file's file system takes advisory locks at all. Must not be called while the database is open.
bool canLock(const std::filesystem::path& path);

}  // namespace vantrel::desktop
