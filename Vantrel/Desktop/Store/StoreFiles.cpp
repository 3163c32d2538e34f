#include "Vantrel/Desktop/Store/StoreFiles.hpp"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <system_error>
#include <utility>

namespace vantrel::desktop {
namespace {

namespace fs = std::filesystem;

constexpr mode_t directoryMode = S_IRWXU;
constexpr mode_t fileMode = S_IRUSR | S_IWUSR;
constexpr mode_t othersRights = S_IRWXG | S_IRWXO;

/// What may lie beside the database. A log is renamed before its database: between the two a crash then leaves the
/// damaged database where it was, to be found again, and never a log that a new database would delete.
constexpr std::array<const char*, 4> storeSuffixes{"-wal", "-shm", "-journal", ""};

std::string systemText(int error) {
    return std::generic_category().message(error);
}

fs::path withSuffix(const fs::path& path, const char* suffix) {
    fs::path result = path;
    result += suffix;
    return result;
}

StoreFileProblem makeDirectories(const fs::path& directory) {
    if (directory.empty() || ::access(directory.c_str(), F_OK) == 0) {
        return {};
    }
    if (StoreFileProblem problem = makeDirectories(directory.parent_path()); !problem.empty()) {
        return problem;
    }
    if (::mkdir(directory.c_str(), directoryMode) != 0) {
        return errno == EEXIST ? StoreFileProblem() : directory.string() + ": " + systemText(errno);
    }
    // A umask may have taken rights of the owner.
    ::chmod(directory.c_str(), directoryMode);
    return {};
}

/// Takes the rights of others from our database, and gives what lies beside it the same rights: a log that was made
/// while the database was read only would keep it so.
void setRights(const fs::path& path) {
    struct stat database {};
    if (::stat(path.c_str(), &database) != 0 || database.st_uid != ::geteuid()) {
        return;
    }
    const mode_t rights = database.st_mode & 07777U & ~othersRights;
    for (const char* suffix : storeSuffixes) {
        const fs::path part = withSuffix(path, suffix);
        struct stat status {};
        const bool isOurs = ::stat(part.c_str(), &status) == 0 && status.st_uid == ::geteuid();
        if (isOurs && (status.st_mode & 07777U) != rights) {
            ::chmod(part.c_str(), rights);
        }
    }
}

off_t sizeOf(const fs::path& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_size : 0;
}

/// Renames unless the new name is taken. Returns 0 or the system's error number.
int renameWithoutReplacing(const fs::path& from, const fs::path& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return 0;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return errno;
    }
    // Not every file system knows that flag.
    if (::access(to.c_str(), F_OK) == 0) {
        return EEXIST;
    }
    return ::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

std::string timeStamp() {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    ::gmtime_r(&now, &parts);
    std::array<char, 32> buffer{};
    const std::size_t length = std::strftime(buffer.data(), buffer.size(), "%Y%m%d-%H%M%S", &parts);
    return {buffer.data(), length};
}

bool isSomebodyElses(const fs::path& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && status.st_uid != ::geteuid();
}

/// A name under which nothing of an earlier store lies.
std::optional<fs::path> unusedName(const fs::path& path) {
    const fs::path stem = path.string() + ".damaged-" + timeStamp();
    for (int attempt = 1; attempt <= 1000; ++attempt) {
        const fs::path candidate = attempt == 1 ? stem : fs::path(stem.string() + "-" + std::to_string(attempt));
        const bool isUnused = std::ranges::none_of(storeSuffixes, [&](const char* suffix) {
            struct stat status {};
            return ::lstat(withSuffix(candidate, suffix).c_str(), &status) == 0;
        });
        if (isUnused) {
            return candidate;
        }
    }
    return std::nullopt;
}

}  // namespace

std::optional<fs::path> defaultStorePath() {
    const auto below = [](const char* variable, const char* folder) -> std::optional<fs::path> {
        const char* value = std::getenv(variable);
        if (value == nullptr || value[0] != '/') {
            return std::nullopt;
        }
        return fs::path(value) / folder / "vantrel" / "defaults.sqlite3";
    };
    if (auto path = below("XDG_CONFIG_HOME", "")) {
        return path->lexically_normal();
    }
    return below("HOME", ".config");
}

StoreFileProblem prepareStoreFile(fs::path& path) {
    if (StoreFileProblem problem = makeDirectories(path.parent_path()); !problem.empty()) {
        return problem;
    }
    // Created here, because SQLite would give a new file the rights that the umask leaves. Never through a symbolic
    // link: where that points to nothing, its owner's disk is perhaps not there yet.
    const int descriptor = ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, fileMode);
    if (descriptor >= 0) {
        // A umask may have taken rights of the owner.
        ::fchmod(descriptor, fileMode);
        ::close(descriptor);
    } else if (errno != EEXIST) {
        const int error = errno;
        if (::access(path.c_str(), F_OK) != 0) {
            return systemText(error);
        }
    }
    std::error_code error;
    fs::path real = fs::canonical(path, error);
    if (error) {
        return "a symbolic link to nothing that can be reached: " + error.message();
    }
    struct stat status {};
    if (::stat(real.c_str(), &status) != 0) {
        return systemText(errno);
    }
    if (!S_ISREG(status.st_mode)) {
        return "not a regular file";
    }
    path = std::move(real);
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

bool hasOrphanedLog(const fs::path& path) {
    // SQLite takes a single byte for nothing too: it writes one itself where a file system needs that for its locks.
    return sizeOf(path) <= 1 && hasLogContent(path);
}

bool isCutOff(const fs::path& path) {
    constexpr off_t smallestPage = 512;  // every page size is a multiple of it
    const off_t size = sizeOf(path);
    return size > 1 && size % smallestPage != 0 && !hasLogContent(path) && sizeOf(withSuffix(path, "-journal")) == 0;
}

std::optional<fs::path> setStoreAside(const fs::path& path) {
    if (isClosedToWriting(path) && isSomebodyElses(path)) {
        return std::nullopt;
    }
    std::optional<fs::path> aside = unusedName(path);
    if (!aside) {
        return std::nullopt;
    }
    for (const char* suffix : storeSuffixes) {
        const int error = renameWithoutReplacing(withSuffix(path, suffix), withSuffix(*aside, suffix));
        if (error != 0 && error != ENOENT) {
            return std::nullopt;
        }
    }
    return aside;
}

bool isOnNetwork(const fs::path& path) {
    // Those that <linux/magic.h> of Debian 12 does not name are written out.
    constexpr std::array<unsigned long, 8> networkFileSystems{NFS_SUPER_MAGIC,  SMB_SUPER_MAGIC, CIFS_SUPER_MAGIC,
                                                              SMB2_SUPER_MAGIC, V9FS_MAGIC,      AFS_SUPER_MAGIC,
                                                              CODA_SUPER_MAGIC, CEPH_SUPER_MAGIC};
    struct statfs status {};
    if (::statfs(path.c_str(), &status) != 0) {
        return false;
    }
    const auto kind = static_cast<unsigned long>(status.f_type) & 0xffffffffUL;
    return std::ranges::find(networkFileSystems, kind) != networkFileSystems.end();
}

bool canLock(const fs::path& path) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        return true;
    }
    struct flock lock {};
    lock.l_type = F_RDLCK;
    lock.l_whence = SEEK_SET;
    lock.l_len = 1;
    const bool isRefused = ::fcntl(descriptor, F_SETLK, &lock) != 0 && errno != EACCES && errno != EAGAIN;
    ::close(descriptor);
    return !isRefused;
}

}  // namespace vantrel::desktop
