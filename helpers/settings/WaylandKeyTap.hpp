#pragma once

#include <QKeyEvent>
#include <QObject>
#include <memory>
#include <optional>
#include <utility>

#include "helpers/settings/RecorderKeyTap.hpp"
#include "helpers/settings/ShortcutsInhibitor.hpp"

namespace vantrel::qt {

/// The key tap of a Wayland session: the compositor is asked to leave its shortcuts alone while the window has the
/// keyboard, and Qt's key events, which then have every chord, are taken before anything in the window sees them.
class WaylandKeyTap final : public QObject, public RecorderKeyTap {
  public:
    /// Null where Qt does not run on a Wayland compositor.
    static std::unique_ptr<RecorderKeyTap> make(QWidget& window, Events events);

    WaylandKeyTap(QWidget& window, Events events) : RecorderKeyTap(std::move(events)), window_(window) {}
    ~WaylandKeyTap() override;

    void letGo() override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void startRecording() override;
    void takeKeyboard();
    bool keyChanged(const QKeyEvent& event);

    QWidget& window_;
    std::optional<ShortcutsInhibitor> inhibitor_;
    bool isTaken_ = false;  ///< the keyboard
};

}  // namespace vantrel::qt
