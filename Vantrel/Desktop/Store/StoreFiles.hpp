#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace vantrel::desktop {

/// Where the person's settings live: $XDG_CONFIG_HOME/vantrel/defaults.sqlite3 when that variable holds an absolute
/// path, else ~/.config/vantrel/defaults.sqlite3. None without a home directory.
std::optional<std::filesystem::path> defaultStorePath();

/// Makes the file's directories (mode 0700) and the file itself (0600, empty) where they are missing, and takes the
/// rights of others from a file that is ours. Follows symbolic links, so that `path` then names the real file. Returns
/// nothing when it went well, else the reason in a few words. Must not be called while the database is open: closing
/// any descriptor of it would drop the locks.
std::string prepareStoreFile(std::filesystem::path& path);

/// What shows from outside that the store is damaged, in a few words; null for nothing. A log with content beside a
/// missing or empty database: that would be opened as an empty one, and the log deleted. A database that ends within a
/// page, where no log or journal tells of a change that was under way: what is missing would read as zeros.
const char* visibleDamage(const std::filesystem::path& path);

/// Whether a write-ahead log with content lies beside the database.
bool hasLogContent(const std::filesystem::path& path);

/// Whether this process may not write the database, although its disk could be written.
bool isClosedToWriting(const std::filesystem::path& path);

/// Whether a write-ahead log or a journal lies beside the database, even an empty one: somebody may have it open.
bool hasJournalBeside(const std::filesystem::path& path);

/// Renames the database and all that belongs to it to a new name in the same directory. Returns the new name of the
/// database; none when it could not be renamed, or is somebody else's, who alone may write it.
std::optional<std::filesystem::path> setStoreAside(const std::filesystem::path& path);

/// Whether the file lies on a file system that several machines may have mounted: a write-ahead log needs memory that
/// all its users share.
bool isOnNetwork(const std::filesystem::path& path);

/// Whether the file's file system takes advisory locks at all. Must not be called while the database is open.
bool canLock(const std::filesystem::path& path);

}  // namespace vantrel::desktop
