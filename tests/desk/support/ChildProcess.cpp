#include "tests/desk/support/ChildProcess.hpp"

#include <fcntl.h>
#include <grp.h>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "tests/desk/support/TemporaryDirectory.hpp"

namespace vantrel::desk {

namespace {

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (auto& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

void redirect(const char* path, int flags, int descriptor) {
    const int file = open(path, flags | O_CLOEXEC, 0600);
    if (file < 0 || dup2(file, descriptor) < 0) {
        _exit(127);
    }
}

void become(uid_t user) {
    if (setgroups(0, nullptr) != 0 || setresgid(user, user, user) != 0 || setresuid(user, user, user) != 0) {
        dprintf(STDERR_FILENO, "cannot become user %u: %s\n", user, std::strerror(errno));
        _exit(127);
    }
}

/// Takes the right to read /proc/PID/exe of everybody along to the program that is run next. Before the change of the
/// user it has to be said that there is something to keep.
void keepSightOfPrograms() {
    __user_cap_header_struct header{.version = _LINUX_CAPABILITY_VERSION_3, .pid = 0};
    constexpr std::uint32_t set = 1U << CAP_SYS_PTRACE;
    __user_cap_data_struct data[_LINUX_CAPABILITY_U32S_3]{{.effective = set, .permitted = set, .inheritable = set}, {}};
    if (syscall(SYS_capset, &header, data) != 0 ||
        prctl(PR_CAP_AMBIENT, PR_CAP_AMBIENT_RAISE, CAP_SYS_PTRACE, 0, 0) != 0) {
        dprintf(STDERR_FILENO, "cannot keep a capability: %s\n", std::strerror(errno));
        _exit(127);
    }
}

}  // namespace

ChildProcess::ChildProcess(const ChildProcessOptions& options) {
    auto arguments = options.arguments;
    auto entries = options.environment.entries();
    const auto argumentPointers = pointersTo(arguments);
    const auto entryPointers = pointersTo(entries);
    const pid_t parent = getpid();

    processId_ = fork();
    if (processId_ < 0) {
        throw std::runtime_error(std::string("fork: ") + std::strerror(errno));
    }
    if (processId_ == 0) {
        redirect("/dev/null", O_RDONLY, STDIN_FILENO);
        redirect(options.standardOutput.c_str(), O_WRONLY | O_CREAT | O_APPEND, STDOUT_FILENO);
        redirect(options.standardError.c_str(), O_WRONLY | O_CREAT | O_APPEND, STDERR_FILENO);
        if (options.user) {
            prctl(PR_SET_KEEPCAPS, options.seesEverybodysPrograms ? 1 : 0);
            become(*options.user);
            if (options.seesEverybodysPrograms) {
                keepSightOfPrograms();
            }
        }
        // After the change of the user, which forgets it. SIGTERM lets Xorg take its socket away, which SIGKILL would
        // leave behind.
        prctl(PR_SET_PDEATHSIG, SIGTERM);
        if (getppid() != parent) {
            _exit(127);
        }
        if (options.keptDescriptor >= 0) {
            fcntl(options.keptDescriptor, F_SETFD, 0);
        }
        execvpe(argumentPointers[0], argumentPointers.data(), entryPointers.data());
        dprintf(STDERR_FILENO, "cannot run %s: %s\n", argumentPointers[0], std::strerror(errno));
        _exit(127);
    }
}

ChildProcess::~ChildProcess() {
    end();
}

void ChildProcess::reap(int options) {
    int status = 0;
    if (exitStatus_ || waitpid(processId_, &status, options) != processId_) {
        return;
    }
    if (WIFSIGNALED(status)) {
        exitStatus_ = ExitStatus{.code = std::nullopt, .signal = WTERMSIG(status)};
    } else {
        exitStatus_ = ExitStatus{.code = WEXITSTATUS(status), .signal = std::nullopt};
    }
}

bool ChildProcess::isRunning() {
    reap(WNOHANG);
    return !exitStatus_;
}

void ChildProcess::sendSignal(int signal) {
    if (isRunning()) {
        kill(processId_, signal);
    }
}

std::optional<ExitStatus> ChildProcess::waitForExit(Duration deadline) {
    waitUntil([this] { return !isRunning(); }, deadline);
    return exitStatus_;
}

ExitStatus ChildProcess::end(int signal) {
    constexpr auto patience = std::chrono::seconds(10);
    sendSignal(signal);
    if (!waitForExit(patience)) {
        sendSignal(SIGKILL);
        reap(0);
    }
    return exitStatus_.value_or(ExitStatus{});
}

bool isInPath(const std::string& program) {
    const char* const path = std::getenv("PATH");
    std::istringstream directories(path == nullptr ? "" : path);
    for (std::string directory; std::getline(directories, directory, ':');) {
        if (access((std::filesystem::path(directory) / program).c_str(), X_OK) == 0) {
            return true;
        }
    }
    return false;
}

void runProgram(const std::vector<std::string>& arguments, const Environment& environment) {
    const TemporaryDirectory directory("run");
    ChildProcessOptions options;
    options.arguments = arguments;
    options.environment = environment;
    options.standardError = directory.path() / "stderr";
    ChildProcess process(options);
    const auto status = process.waitForExit();
    if (status != ExitStatus{.code = 0, .signal = std::nullopt}) {
        std::ostringstream text;
        for (const auto& argument : arguments) {
            text << argument << ' ';
        }
        text << "failed: " << std::ifstream(options.standardError).rdbuf();
        throw std::runtime_error(text.str());
    }
}

}  // namespace vantrel::desk
