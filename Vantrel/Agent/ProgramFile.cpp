#include "Vantrel/Agent/ProgramFile.hpp"

#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace vantrel {

namespace {

constexpr const char* link = "/proc/self/exe";
constexpr std::string_view deletedMark = " (deleted)";

/// An upgrade replaces one file after the other.
constexpr std::chrono::seconds restingTime{2};
/// For so many of these the new file is waited for: a package that was removed does not come.
constexpr int mostLooks = 30;

std::string linkTarget() {
    std::error_code error;
    return std::filesystem::read_symlink(link, error).native();
}

bool isDeleted(std::string_view target) {
    return target.size() > deletedMark.size() && target.substr(target.size() - deletedMark.size()) == deletedMark;
}

/// Whether the file can be run and has been as it is for a while.
bool isAtRest(const std::filesystem::path& file) {
    struct stat status {};
    timespec now{};
    return access(file.c_str(), X_OK) == 0 && stat(file.c_str(), &status) == 0 &&
           clock_gettime(CLOCK_REALTIME, &now) == 0 && now.tv_sec - status.st_ctim.tv_sec >= restingTime.count();
}

}  // namespace

std::filesystem::path programFile() {
    std::string target = linkTarget();
    if (isDeleted(target)) {
        target.resize(target.size() - deletedMark.size());
    }
    return target;
}

ProgramFileWatch::ProgramFileWatch(std::function<void()> replaced)
    : replaced_(std::move(replaced)), inotify_(inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {
    // The number of names that a file has is one of its attributes; it has none after the last was taken from it.
    if (inotify_.isOpen() && inotify_add_watch(inotify_.get(), link, IN_ATTRIB) >= 0) {
        events_ = LoopSource::whenReadable(inotify_.get(), [this] { readEvents(); });
    }
}

void ProgramFileWatch::readEvents() {
    std::array<char, 1024> events{};
    while (read(inotify_.get(), events.data(), events.size()) > 0) {
    }
    if (isDeleted(linkTarget())) {
        events_.reset();
        looksLeft_ = mostLooks;
        looking_ = LoopSource::after(restingTime, [this] { look(); });
    }
}

void ProgramFileWatch::look() {
    if (isAtRest(programFile())) {
        replaced_();
    } else if (--looksLeft_ > 0) {
        looking_ = LoopSource::after(restingTime, [this] { look(); });
    }
}

}  // namespace vantrel
