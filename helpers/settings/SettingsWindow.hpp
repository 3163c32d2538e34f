#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QWidget>
#include <functional>

#include "Vantrel/Channel/SettingsMessages.hpp"
#include "helpers/settings/PopUpButton.hpp"
#include "helpers/settings/RecorderButton.hpp"
#include "helpers/settings/SavedPointsList.hpp"
#include "helpers/settings/ScrollingContent.hpp"
#include "helpers/settings/StatusLabel.hpp"

namespace vantrel::qt {

/// The settings window, drawn with Qt Widgets. As large as its content where the screen has room for that, else its
/// content scrolls.
class SettingsWindow final : public QWidget {
  public:
    struct Events {
        std::function<void(const WindowReport& done)> reported;  ///< what the person did; not numbered
        SavedPointsModel::TextForRow textForRow;
    };

    /// A hidden window, centred on the display that the pointer is on.
    explicit SettingsWindow(Events events);

    /// Puts the window, which is hidden, back to where it stood once, as far as its screen still has that place.
    void putBack(QPoint place);

    /// Shows the content, but for the rows of the table. That is no report.
    void setContent(const WindowContent& content);

    /// Asks for the texts of all rows again, of which there are so many now. The scroll position stays.
    void reloadSavedPoints(std::uint32_t rows) { savedPointsTable_.reload(rows); }
    /// Draws the row again: its text has come.
    void redrawSavedPoint(std::uint32_t row) { savedPointsTable_.redraw(row); }

    /// A key that the desktop has captured for the recorder, and the end of that.
    void takeCapturedKey(const WindowKey& key) { recorder_.takeCapturedKey(key); }
    void endCapture() { recorder_.endCapture(); }
    void focusRecorder() { recorder_.setFocus(Qt::OtherFocusReason); }

    void showWindow();
    /// Brings the window to the front, onto the workspace that the person looks at, and gives it the keyboard.
    void makeKeyAndOrderFront();

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    using Kind = WindowReport::Kind;

    void buildContent();
    QWidget& makeHeader();
    QWidget& makeShortcutSection();
    QWidget& makeBehaviorSection();
    QWidget& makeSavedPointsSection();
    void wireControls();
    void setTabOrders();
    void updateColors();
    void updateFonts();
    void fitContent();
    void measureAfresh();
    void watchScreen(const QScreen& screen);
    void report(Kind kind, int value = 0) { events_.reported({.kind = kind, .value = value}); }

    Events events_;
    bool isBuilt_ = false;
    bool wasOpen_ = false;  ///< when it was last to be shown
    ScrollingContent content_;
    QLabel title_;
    TintedLabel subtitle_;
    TintedLabel primaryLabel_;
    RecorderButton recorder_;
    QPushButton resetShortcutButton_;
    StatusLabel shortcutStatusLabel_;
    TintedLabel recommendation_;
    TintedLabel modeLabel_;
    PopUpButton modePopup_;
    TintedLabel animationLabel_;
    PopUpButton animationPopup_;
    TintedLabel feedbackLabel_;
    QCheckBox soundButton_;
    TintedLabel savedPointsSummaryLabel_;
    TintedLabel savedPointsEmptyLabel_;
    SavedPointsList savedPointsTable_;
    QPushButton clearSavedPointsButton_;
};

}  // namespace vantrel::qt
