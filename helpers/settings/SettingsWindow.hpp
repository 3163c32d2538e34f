#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QWidget>
#include <memory>
#include <string>
#include <vector>

#include "Vantrel/Interface/PreferencesWindowView.hpp"
#include "helpers/settings/PopUpButton.hpp"
#include "helpers/settings/RecorderButton.hpp"
#include "helpers/settings/SavedPointsList.hpp"
#include "helpers/settings/ScrollingContent.hpp"
#include "helpers/settings/StatusLabel.hpp"

namespace vantrel::qt {

/// The settings window, drawn with Qt Widgets. As large as its content where the screen has room for that, else its
/// content scrolls.
class SettingsWindow final : public QWidget, public PreferencesWindowView {
  public:
    /// A hidden window, centred on the display that the pointer is on.
    SettingsWindow();

    /// Puts the window, which is hidden, back to where it stood once, as far as its screen still has that place.
    void putBack(QPoint place);

    /// Draws the row again: its text has come.
    void redrawSavedPoint(std::uint32_t row) { savedPointsTable_.redraw(row); }

    void setDelegate(std::weak_ptr<PreferencesWindowViewDelegate> delegate) override;
    ShortcutRecorderButton& shortcutRecorderButton() override { return recorder_; }
    void setShortcutStatus(const std::string& text, SemanticColor color) override;
    void setTitles(PreferencesPopUp popUp, const std::vector<std::string>& titles) override;
    void selectItem(PreferencesPopUp popUp, std::size_t index) override;
    [[nodiscard]] std::int64_t indexOfSelectedItem(PreferencesPopUp popUp) const override;
    void setSoundChecked(bool checked) override;
    [[nodiscard]] bool isSoundChecked() const override { return soundButton_.isChecked(); }
    void setSavedPointsSummary(const std::string& text) override;
    void setSavedPointsEmptyLabelHidden(bool hidden) override;
    void setSavedPointsTableHidden(bool hidden) override;
    void setClearSavedPointsEnabled(bool enabled) override;
    void reloadSavedPoints() override;
    void showWindow() override;
    void makeKeyAndOrderFront() override;

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    using Action = void (PreferencesWindowViewDelegate::*)();

    void buildContent();
    QWidget& makeHeader();
    QWidget& makeShortcutSection();
    QWidget& makeBehaviorSection();
    QWidget& makeSavedPointsSection();
    void wireControls();
    void setTabOrders();
    void send(Action action);
    void updateColors();
    void updateFonts();
    void fitContent();
    void measureAfresh();
    void watchScreen(const QScreen& screen);
    PopUpButton& popUpButton(PreferencesPopUp popUp);
    [[nodiscard]] const PopUpButton& popUpButton(PreferencesPopUp popUp) const;

    std::weak_ptr<PreferencesWindowViewDelegate> delegate_;
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
