#include "tests/desk/support/MountPoint.hpp"

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace vantrel::desk {

namespace {

void require(bool succeeded, const std::string& what) {
    if (!succeeded) {
        throw std::runtime_error(what + ": " + std::strerror(errno));
    }
}

void mapOwnIdentity(uid_t user, gid_t group) {
    std::ofstream("/proc/self/setgroups") << "deny";
    std::ofstream("/proc/self/uid_map") << user << ' ' << user << " 1";
    std::ofstream("/proc/self/gid_map") << group << ' ' << group << " 1";
}

}  // namespace

void enterPrivateMounts() {
    const uid_t user = geteuid();
    const gid_t group = getegid();
    const bool isRoot = user == 0;
    require(unshare(isRoot ? CLONE_NEWNS : CLONE_NEWNS | CLONE_NEWUSER) == 0,
            "this test mounts file systems, which takes root or user namespaces");
    if (!isRoot) {
        mapOwnIdentity(user, group);
    }
    // Fails in a changed root that is no mount point; the mounts then end with their objects only.
    mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
}

MountPoint MountPoint::ofSize(const std::filesystem::path& directory, std::size_t bytes) {
    const auto options = "mode=0700,size=" + std::to_string(bytes);
    require(mount("tmpfs", directory.c_str(), "tmpfs", MS_NOSUID | MS_NODEV, options.c_str()) == 0, "mount tmpfs");
    return MountPoint(directory);
}

MountPoint MountPoint::readOnly(const std::filesystem::path& directory) {
    require(mount(directory.c_str(), directory.c_str(), nullptr, MS_BIND, nullptr) == 0, "bind mount");
    require(mount(nullptr, directory.c_str(), nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr) == 0,
            "remount read-only");
    return MountPoint(directory);
}

MountPoint::~MountPoint() {
    umount2(directory_.c_str(), MNT_DETACH);
}

void MountPoint::allowWriting() {
    require(mount(nullptr, directory_.c_str(), nullptr, MS_REMOUNT | MS_BIND, nullptr) == 0, "remount writable");
}

void MountPoint::fill(const std::filesystem::path& file) {
    const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    require(descriptor >= 0, "create the filling file");
    const std::vector<char> block(4096);
    for (auto size = block.size(); size > 0; size /= 2) {
        while (write(descriptor, block.data(), size) == static_cast<ssize_t>(size)) {
        }
    }
    close(descriptor);
}

}  // namespace vantrel::desk
