#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "tests/desk/support/SessionBus.hpp"
#include "tests/desk/wayland/support/CompositorProcess.hpp"

namespace vantrel::desk {

struct KwinOptions {
    /// Of one shape, that of the first: what differs in size is done by another scale. Their corners should be whole
    /// pixels with that scale, because KWin moves the windows behind everything to such ones, and a person sees the
    /// pointer a part of a pixel off otherwise.
    std::vector<PrivateOutput> outputs;
    std::string keyboardLayouts = "us";
    bool allowsAgent = true;   ///< whether the agent may do what KWin keeps from most programs
    bool allowsPerson = true;  ///< whether the test's own program may, which has the person's hands
};

/// A private KWin with a bus of its own. The first of its displays is the main one. Its layout has no negative places,
/// so the main display may stand elsewhere than at (0, 0).
class KwinProcess final : public CompositorProcess {
  public:
    explicit KwinProcess(const KwinOptions& options);
    /// Not after its bus.
    ~KwinProcess() override { stop(); }

    /// Kills it and starts it anew, as Plasma does after a crash; with the same displays, and its bus stays.
    void restart();

    void arrange(const std::vector<PrivateOutput>& outputs) const override;
    [[nodiscard]] bool switchOff(int number) const override;
    /// Shows exactly these of its displays, by their numbers from 1 on; the first is the main one. Throws when it
    /// refuses.
    void show(const std::vector<std::pair<int, PrivateOutput>>& outputs) const;

    SessionBus& bus() { return bus_; }
    [[nodiscard]] std::string busAddress() const override { return bus_.address(); }

    /// Makes the keyboard layout of that number, from 0 on, the active one. Throws when there is none.
    void chooseLayout(unsigned number) const;

    /// What the expression of a KWin script comes to, as text: "workspace.cursorPos.x".
    [[nodiscard]] std::string evaluate(const std::string& expression);

    /// Calls a method of KWin's on its bus, the arguments as gdbus(1) reads them; the answer as it writes it. Throws
    /// when there is none.
    std::string call(const std::string& path, const std::string& method,
                     const std::vector<std::string>& arguments) const;

    /// Whether it asks which program a client runs before it lets that do more than most. It learns that from the
    /// kernel, which hides root's programs from other users, and not every container lets its root show them.
    static bool checksPermissions();

    /// Whether it puts the pointer on whole points alone, as before version 6.
    static bool keepsWholePoints();

    /// Lets the program do what KWin keeps from most; it learns that a second or two later, and asks when a program
    /// connects.
    void allow(const std::filesystem::path& program) const;

  private:
    void configure(const KwinOptions& options) const;
    void run();

    SessionBus bus_;
    int scripts_ = 0;
    std::vector<PrivateOutput> outputs_;
    std::string mode_;  ///< the first display's, which is everybody's
};

}  // namespace vantrel::desk
