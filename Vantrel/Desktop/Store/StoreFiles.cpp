#include "Vantrel/Desktop/Store/StoreFiles.hpp"

#include <fcntl.h>
#include <glib.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <system_error>

#include "Vantrel/Handles/FileDescriptor.hpp"
#include "Vantrel/Handles/GLibHandles.hpp"

namespace vantrel::desktop {
namespace {

namespace fs = std::filesystem;

constexpr mode_t directoryMode = S_IRWXU;
constexpr mode_t fileMode = S_IRUSR | S_IWUSR;
constexpr mode_t othersRights = S_IRWXG | S_IRWXO;

/// What may lie beside the database. A log is renamed before its database: between the two a crash then leaves the
/// damaged database where it was, to be found again, and never a log that a new database would delete.
constexpr std::array<const char*, 4> storeSuffixes{"-wal", "-shm", "-journal", ""};

fs::path withSuffix(const fs::path& path, const char* suffix) {
    return path.string() + suffix;
}

bool isSomebodyElses(const fs::path& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && status.st_uid != ::geteuid();
}

/// Takes the rights of others from our database, and gives what lies beside it the same rights: a log that was made
/// while the database was read only would keep it so.
void setRights(const fs::path& path) {
    struct stat database {};
    if (::stat(path.c_str(), &database) != 0 || database.st_uid != ::geteuid()) {
        return;
    }
    for (const char* suffix : storeSuffixes) {
        const fs::path part = withSuffix(path, suffix);
        if (!isSomebodyElses(part)) {
            ::chmod(part.c_str(), database.st_mode & 07777U & ~othersRights);
        }
    }
}

off_t sizeOf(const fs::path& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_size : 0;
}

/// A name that nothing has, for it tells the microsecond.
fs::path newName(const fs::path& path) {
    const std::unique_ptr<GDateTime, decltype(&g_date_time_unref)> now(g_date_time_new_now_utc(), &g_date_time_unref);
    const GCharPointer stamp(g_date_time_format(now.get(), "%Y%m%d-%H%M%S-%f"));
    return path.string() + ".damaged-" + stamp.get();
}

}  // namespace

std::optional<fs::path> defaultStorePath() {
    const auto below = [](const char* variable, const char* folder) -> std::optional<fs::path> {
        const char* value = std::getenv(variable);
        if (value == nullptr || value[0] != '/') {
            return std::nullopt;
        }
        return (fs::path(value) / folder / "vantrel" / "defaults.sqlite3").lexically_normal();
    };
    const auto configured = below("XDG_CONFIG_HOME", "");
    return configured ? configured : below("HOME", ".config");
}

std::string prepareStoreFile(fs::path& path) {
    const fs::path directory = path.parent_path();
    // Made here and without a mask, because SQLite would give a new file the rights that the mask leaves. Never through
    // a symbolic link: where that points to nothing, its owner's disk is perhaps not there yet.
    const mode_t mask = ::umask(0);
    const bool hasDirectory = g_mkdir_with_parents(directory.c_str(), directoryMode) == 0;
    const bool isMade =
        hasDirectory && FileDescriptor(::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, fileMode)).isOpen();
    const int error = errno;
    ::umask(mask);
    if (!hasDirectory) {
        return directory.string() + ": " + std::generic_category().message(error);
    }
    if (!isMade && error != EEXIST && ::access(path.c_str(), F_OK) != 0) {
        return std::generic_category().message(error);
    }
    std::error_code failure;
    const fs::path real = fs::canonical(path, failure);
    if (failure) {
        return "a symbolic link to nothing that can be reached: " + failure.message();
    }
    if (!fs::is_regular_file(real, failure)) {
        return failure ? failure.message() : "not a regular file";
    }
    path = real;
    setRights(path);
    return {};
}

bool hasLogContent(const fs::path& path) {
    return sizeOf(withSuffix(path, "-wal")) > 0;
}

bool isClosedToWriting(const fs::path& path) {
    return ::access(path.c_str(), W_OK) != 0 && errno == EACCES;
}

bool hasJournalBeside(const fs::path& path) {
    return ::access(withSuffix(path, "-wal").c_str(), F_OK) == 0 ||
           ::access(withSuffix(path, "-journal").c_str(), F_OK) == 0;
}

const char* visibleDamage(const fs::path& path) {
    constexpr off_t smallestPage = 512;  // every page size is a multiple of it
    const off_t size = sizeOf(path);
    // SQLite takes a single byte for nothing: it writes one itself where a file system needs that for its locks.
    if (size <= 1) {
        return hasLogContent(path) ? "was empty beside a log" : nullptr;
    }
    const bool isCutOff = size % smallestPage != 0 && !hasLogContent(path) && sizeOf(withSuffix(path, "-journal")) == 0;
    return isCutOff ? "was cut off" : nullptr;
}

std::optional<fs::path> setStoreAside(const fs::path& path) {
    if (isClosedToWriting(path) && isSomebodyElses(path)) {
        return std::nullopt;
    }
    const fs::path aside = newName(path);
    for (const char* suffix : storeSuffixes) {
        if (::rename(withSuffix(path, suffix).c_str(), withSuffix(aside, suffix).c_str()) != 0 && errno != ENOENT) {
            return std::nullopt;
        }
    }
    return aside;
}

bool isOnNetwork(const fs::path& path) {
    constexpr std::array<unsigned long, 8> networkFileSystems{NFS_SUPER_MAGIC,  SMB_SUPER_MAGIC, CIFS_SUPER_MAGIC,
                                                              SMB2_SUPER_MAGIC, V9FS_MAGIC,      AFS_SUPER_MAGIC,
                                                              CODA_SUPER_MAGIC, CEPH_SUPER_MAGIC};
    struct statfs status {};
    const bool isKnown = ::statfs(path.c_str(), &status) == 0;
    const auto kind = static_cast<unsigned long>(status.f_type) & 0xffffffffUL;
    return isKnown && std::ranges::find(networkFileSystems, kind) != networkFileSystems.end();
}

bool canLock(const fs::path& path) {
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    struct flock lock {};
    lock.l_type = F_RDLCK;
    lock.l_whence = SEEK_SET;
    lock.l_len = 1;
    return !file.isOpen() || ::fcntl(file.get(), F_SETLK, &lock) == 0 || errno == EACCES || errno == EAGAIN;
}

}  // namespace vantrel::desktop
