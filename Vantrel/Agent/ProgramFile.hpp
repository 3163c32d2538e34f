#pragma once

#include <filesystem>
#include <functional>

#include "Vantrel/Handles/FileDescriptor.hpp"
#include "Vantrel/Handles/LoopSource.hpp"

namespace vantrel {

/// Where the file of this program is, or was until another one took its place (proc(5), /proc/pid/exe).
std::filesystem::path programFile();

/// Tells when another file has taken the place of the one that this process runs, as in an upgrade of its package: the
/// helpers are the new version's from then on, and Plasma trusts only programs whose file is there. Costs nothing until
/// then.
class ProgramFileWatch {
  public:
    /// `replaced` is called once at most, when nothing has happened to the new file for two seconds.
    explicit ProgramFileWatch(std::function<void()> replaced);

  private:
    void readEvents();
    void look();

    std::function<void()> replaced_;
    FileDescriptor inotify_;
    LoopSource events_;
    LoopSource looking_;
    int looksLeft_ = 0;
};

}  // namespace vantrel
