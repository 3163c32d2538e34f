#include "tests/desk/support/SessionBus.hpp"

#include <unistd.h>

#include <fstream>
#include <stdexcept>

namespace vantrel::desk {

SessionBus::SessionBus(std::optional<uid_t> user) : directory_("bus") {
    const auto socket = (directory_.path() / "socket").native();
    const auto configuration = directory_.path() / "bus.conf";
    std::filesystem::create_directory(servicesDirectory());
    std::ofstream(configuration) << R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path=)" << socket << R"(</listen>
  <servicedir>)" << servicesDirectory().native()
                                 << R"(</servicedir>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow user="*"/>
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";
    ChildProcessOptions options;
    options.arguments = {"dbus-daemon", "--nofork", "--nopidfile", "--print-address",
                         "--config-file=" + configuration.native()};
    options.standardOutput = directory_.path() / "address";
    options.standardError = directory_.path() / "stderr";
    if (user) {
        options.user = user;
        if (chown(directory_.path().c_str(), *user, *user) != 0) {
            throw std::runtime_error("cannot give a directory to the bus's user");
        }
    }
    process_ = std::make_unique<ChildProcess>(options);
    const bool isUp = waitUntil([&] {
        std::ifstream file(options.standardOutput);
        return (std::getline(file, address_) && !file.eof()) || !process_->isRunning();
    });
    if (!isUp || !process_->isRunning()) {
        throw std::runtime_error("no private session bus (dbus-daemon) could be started");
    }
}

void SessionBus::offerService(const std::string& name, const std::string& program) const {
    std::ofstream(servicesDirectory() / (name + ".service"))
        << "[D-BUS Service]\nName=" << name << "\nExec=" << program << '\n';
}

}  // namespace vantrel::desk
