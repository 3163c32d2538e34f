#pragma once

#include <QKeyEvent>
#include <QObject>
#include <memory>
#include <optional>

#include "helpers/settings/RecorderKeyTap.hpp"
#include "helpers/settings/RecorderKeys.hpp"
#include "helpers/settings/ShortcutsInhibitor.hpp"

namespace vantrel::qt {

/// The key tap of a Wayland session: the compositor is asked to leave its shortcuts alone while the window has the
/// keyboard, and Qt's key events, which then have every chord, are taken before anything in the window sees them.
class WaylandKeyTap final : public QObject, public RecorderKeyTap {
  public:
    /// Null where Qt does not run on a Wayland compositor.
    static std::unique_ptr<RecorderKeyTap> make(QWidget& window);

    explicit WaylandKeyTap(QWidget& window) : window_(window) {}
    ~WaylandKeyTap() override;

    std::unique_ptr<EventMonitor> record(std::uint32_t mask, ShortcutRecorderButton::EventHandler handler) override;
    void letGo() override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void stopRecording() override;
    void takeKeyboard();
    bool keyChanged(const QKeyEvent& event);

    QWidget& window_;
    std::optional<RecorderKeys> keys_;  ///< while recording or while the chord's keys are still down
    std::optional<ShortcutsInhibitor> inhibitor_;
};

}  // namespace vantrel::qt
