#include "Vantrel/Desktop/Helpers/HelperProgram.hpp"

#include <glib.h>
#include <spawn.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <string>
#include <system_error>
#include <utility>

#include "Vantrel/Handles/FileDescriptor.hpp"

namespace vantrel::desktop {
namespace {

/// Starts the program with the socket and returns its process id, or 0.
pid_t spawn(const std::filesystem::path& program, const std::string& argument, int socket) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, socket, Channel::helperDescriptor);
    // Whoever started this process may have left it something open.
    posix_spawn_file_actions_addclosefrom_np(&actions, Channel::helperDescriptor + 1);

    // What this process has changed about signals is its own affair.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t none;
    sigemptyset(&none);
    sigset_t restored;
    sigemptyset(&restored);
    sigaddset(&restored, SIGPIPE);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &restored);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);

    std::string name = program.string();
    std::string first = argument;
    const std::array<char*, 3> arguments{name.data(), first.empty() ? nullptr : first.data(), nullptr};
    pid_t process = 0;
    const int error = posix_spawn(&process, program.c_str(), &actions, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return error == 0 ? process : 0;
}

}  // namespace

std::filesystem::path helperProgram(std::string_view name) {
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    return (self.parent_path() / VANTREL_LIBEXEC_FROM_BIN / name).lexically_normal();
}

Channel startHelper(const std::filesystem::path& program, const std::string& argument) {
    std::array<int, 2> sockets{};
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, sockets.data()) != 0) {
        return {};
    }
    FileDescriptor ours(sockets[0]);
    const FileDescriptor theirs(sockets[1]);
    const pid_t process = spawn(program, argument, theirs.get());
    if (process == 0) {
        return {};
    }
    g_child_watch_add(
        process, [](GPid ended, gint, gpointer) { g_spawn_close_pid(ended); }, nullptr);
    return Channel(std::move(ours));
}

}  // namespace vantrel::desktop
