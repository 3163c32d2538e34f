#include "helpers/settings/SettingsWindow.hpp"

#include <QApplication>
#include <QCloseEvent>
#include <QCursor>
#include <QEvent>
#include <QIcon>
#include <QKeyEvent>
#include <QScreen>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <string>
#include <utility>

#include "Vantrel/Interface/PreferencesWindowLayout.hpp"
#include "Vantrel/Interface/SettingEnumerations.hpp"
#include "helpers/settings/AccessibleRole.hpp"
#include "helpers/settings/DesktopFonts.hpp"
#include "helpers/settings/FormLayout.hpp"
#include "helpers/settings/QtObjects.hpp"
#include "helpers/settings/WindowManagerHints.hpp"
#include "helpers/settings/WorkArea.hpp"

namespace vantrel::qt {

using Layout = PreferencesWindowLayout;
using Texts = PreferencesWindowTexts;

namespace {

template <typename Values>
void addTitles(QComboBox& button, const Values& values) {
    for (const auto value : values) {
        button.addItem(QString::fromStdString(std::string(title(value))));
    }
}

}  // namespace

SettingsWindow::SettingsWindow(Events events)
    : QWidget(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                           Qt::WindowCloseButtonHint),
      events_(std::move(events)),
      title_(Texts::title),
      subtitle_(SemanticColor::secondaryLabel, Texts::subtitle),
      primaryLabel_(SemanticColor::secondaryLabel, Texts::primaryLabel),
      recorder_({.pressed = [this] { report(Kind::recorderPressed); },
                 .shown = [this](bool isShown) { report(Kind::shown, isShown ? 1 : 0); },
                 .keyTap = {.typed = [this](const KeyEvent& key) { events_.reported({.kind = Kind::key, .key = key}); },
                            .taken = [this](bool isTaken) { report(Kind::keyboardTaken, isTaken ? 1 : 0); }}}),
      resetShortcutButton_(Texts::resetButton),
      recommendation_(SemanticColor::secondaryLabel, Texts::recommendation),
      modeLabel_(SemanticColor::secondaryLabel, Texts::modeLabel),
      animationLabel_(SemanticColor::secondaryLabel, Texts::animationLabel),
      feedbackLabel_(SemanticColor::secondaryLabel, Texts::feedbackLabel),
      soundButton_(Texts::soundButton),
      savedPointsSummaryLabel_(SemanticColor::secondaryLabel),
      savedPointsEmptyLabel_(SemanticColor::secondaryLabel, Texts::savedPointsEmpty),
      savedPointsTable_(events_.textForRow),
      clearSavedPointsButton_(Texts::clearSavedPointsButton) {
    // A plain widget is a mere filler to a screen reader, which would not tell that a window came.
    giveAccessibleRole<SettingsWindow, QAccessible::Dialog>();
    setWindowTitle(Texts::windowTitle);
    resize(Layout::contentWidth, Layout::contentHeight);
    setWindowIcon(QIcon::fromTheme("org.vantrel.Vantrel"));
    wireControls();
    buildContent();
    setTabOrders();
    for (const QScreen* const screen : QGuiApplication::screens()) {
        watchScreen(*screen);
    }
    connect(qApp, &QGuiApplication::screenAdded, this, [this](const QScreen* screen) { watchScreen(*screen); });
    isBuilt_ = true;
    updateFonts();
    updateColors();
    if (QScreen* const pointersScreen = QGuiApplication::screenAt(QCursor::pos())) {
        setScreen(pointersScreen);
    }
    measureAfresh();
    WorkArea::centre(*this);
}

void SettingsWindow::buildContent() {
    auto& whole = makeOwnedByParent<QVBoxLayout>(this);
    whole.setContentsMargins(0, 0, 0, 0);
    whole.addWidget(&content_);
    QVBoxLayout& stack = content_.stack();
    stack.setContentsMargins(Layout::sideMargin, Layout::topMargin, Layout::sideMargin, Layout::bottomMargin);
    stack.setSpacing(Layout::rootSpacing);
    stack.addWidget(&makeHeader());
    stack.addWidget(&makeShortcutSection());
    stack.addWidget(&makeBehaviorSection());
    stack.addWidget(&makeSavedPointsSection());
    // Spare height stays at the bottom.
    stack.addStretch(1);
}

QWidget& SettingsWindow::makeHeader() {
    auto& header = makeOwnedByParent<QWidget>();
    auto& stack = makeOwnedByParent<QVBoxLayout>(&header);
    stack.setContentsMargins(0, 0, 0, 0);
    stack.setSpacing(Layout::headerSpacing);
    stack.addWidget(&title_);
    stack.addWidget(&subtitle_);
    return header;
}

QWidget& SettingsWindow::makeShortcutSection() {
    return makeSection(Texts::shortcutSection, {&makeFormRow(primaryLabel_, recorder_, resetShortcutButton_),
                                                &shortcutStatusLabel_, &recommendation_});
}

QWidget& SettingsWindow::makeBehaviorSection() {
    return makeSection(Texts::behaviorSection,
                       {&makeFormRow(modeLabel_, modePopup_), &makeFormRow(animationLabel_, animationPopup_),
                        &makeFormRow(feedbackLabel_, soundButton_)});
}

QWidget& SettingsWindow::makeSavedPointsSection() {
    savedPointsSummaryLabel_.setWordWrap(false);
    savedPointsEmptyLabel_.setWordWrap(false);
    return makeSection(Texts::savedPointsSection, {&savedPointsSummaryLabel_, &savedPointsEmptyLabel_,
                                                   &savedPointsTable_, &clearSavedPointsButton_});
}

void SettingsWindow::wireControls() {
    addTitles(modePopup_, allModes);
    addTitles(animationPopup_, allAnimationStyles);
    // Only what the person does: what the agent sets is not to be reported.
    connect(&resetShortcutButton_, &QPushButton::clicked, this, [this] { report(Kind::resetPressed); });
    connect(&modePopup_, &QComboBox::activated, this, [this](int index) { report(Kind::modeChosen, index); });
    connect(&animationPopup_, &QComboBox::activated, this, [this](int index) { report(Kind::animationChosen, index); });
    // Not `clicked`: a screen reader changes a box without a click.
    connect(&soundButton_, &QCheckBox::toggled, this, [this](bool isOn) { report(Kind::soundChosen, isOn ? 1 : 0); });
    connect(&clearSavedPointsButton_, &QPushButton::clicked, this, [this] { report(Kind::clearPressed); });
    // Enter presses buttons too, not only Space.
    resetShortcutButton_.setAutoDefault(true);
    clearSavedPointsButton_.setAutoDefault(true);
}

void SettingsWindow::setTabOrders() {
    QWidget* previous = &recorder_;
    for (QWidget* const next :
         std::initializer_list<QWidget*>{&resetShortcutButton_, &modePopup_, &animationPopup_, &soundButton_,
                                         &savedPointsTable_.table(), &clearSavedPointsButton_}) {
        setTabOrder(previous, next);
        previous = next;
    }
    recorder_.setFocus();
}

void SettingsWindow::putBack(QPoint place) {
    if (QScreen* const there = QGuiApplication::screenAt(place)) {
        setScreen(there);
    }
    move(place);
    WorkArea::bringInto(*this);
}

void SettingsWindow::setContent(const WindowContent& content) {
    const PreferencesWindowContent& controls = content.controls;
    recorder_.setTitle(content.recorderTitle);
    recorder_.setKeysCaptured(content.keysAreCaptured);
    recorder_.setRecording(content.recordsKeys);
    shortcutStatusLabel_.announce(QString::fromStdString(controls.shortcutStatus), controls.shortcutStatusColor);
    shortcutStatusLabel_.tint(palette());
    modePopup_.setCurrentIndex(controls.selectedMode);
    animationPopup_.setCurrentIndex(controls.selectedAnimation);
    const QSignalBlocker notByThePerson(soundButton_);
    soundButton_.setChecked(controls.isSoundChecked);
    savedPointsSummaryLabel_.setText(QString::fromStdString(controls.savedPointsSummary));
    const bool isEmpty = content.rows == 0;
    savedPointsEmptyLabel_.setHidden(!isEmpty);
    savedPointsTable_.setTableHidden(isEmpty);
    clearSavedPointsButton_.setEnabled(!isEmpty);
}

void SettingsWindow::showWindow() {
    wasOpen_ = isVisible();
    if (!wasOpen_) {
        measureAfresh();
        WindowManagerHints::waitUntilWithdrawn(*this);
        WindowManagerHints::skipTaskBar(*this);
    }
    show();
}

void SettingsWindow::makeKeyAndOrderFront() {
    // A Wayland compositor gives the keyboard to a window that comes, and to no other that merely asks.
    if (QGuiApplication::platformName() == "wayland" && wasOpen_) {
        hide();
        show();
    }
    WindowManagerHints::bringToFront(*this);
}

bool SettingsWindow::event(QEvent* event) {
    const bool isHandled = QWidget::event(event);
    if (event->type() == QEvent::LayoutRequest) {
        fitContent();
    }
    return isHandled;
}

void SettingsWindow::keyPressEvent(QKeyEvent* event) {
    // While a shortcut is recorded no key gets here.
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}

void SettingsWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // Closed and opened again at once: Qt still takes the window for the one with the keyboard, and so will not notice
    // that it gets it.
    if (QGuiApplication::focusWindow() == windowHandle()) {
        QT_WARNING_PUSH
        QT_WARNING_DISABLE_DEPRECATED
        QApplication::setActiveWindow(this);
        QT_WARNING_POP
    }
}

void SettingsWindow::moveEvent(QMoveEvent* event) {
    QWidget::moveEvent(event);
    // To another screen, or for the first time into the window manager's frame.
    if (isBuilt_) {
        fitContent();
    }
}

void SettingsWindow::closeEvent(QCloseEvent* event) {
    // Qt would take the window itself down, and its place on the screen with it.
    event->ignore();
    hide();
}

void SettingsWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (!isBuilt_) {
        return;
    }
    switch (event->type()) {
        case QEvent::PaletteChange:
            updateColors();
            break;
        case QEvent::FontChange:
        case QEvent::StyleChange:
            updateFonts();
            break;
        default:
            break;
    }
}

void SettingsWindow::updateColors() {
    for (TintedLabel* const label : std::initializer_list<TintedLabel*>{
             &subtitle_, &primaryLabel_, &shortcutStatusLabel_, &recommendation_, &modeLabel_, &animationLabel_,
             &feedbackLabel_, &savedPointsSummaryLabel_, &savedPointsEmptyLabel_}) {
        label->tint(palette());
    }
}

void SettingsWindow::updateFonts() {
    title_.setFont(titleFont());
    recorder_.updateFont();
    alignFormLabels({&primaryLabel_, &modeLabel_, &animationLabel_, &feedbackLabel_});
}

void SettingsWindow::fitContent() {
    const QSize room = WorkArea::roomFor(*this);
    QSize needed = content_.neededSize(Layout::contentWidth);
    if (needed.height() > room.height()) {
        needed.rwidth() += content_.scrollBarWidth();
    }
    // Wider than the layout only where the desktop's font is so large that a row does not fit. A window does not shrink
    // under the person's hands, unless the screen does.
    needed = needed.expandedTo({Layout::contentWidth, Layout::contentHeight}).expandedTo(size()).boundedTo(room);
    if (needed == size() && needed == minimumSize() && needed == maximumSize()) {
        return;
    }
    const bool grows = needed.width() > width() || needed.height() > height();
    setFixedSize(needed);
    if (grows && isVisible()) {
        WorkArea::bringInto(*this);
    }
}

void SettingsWindow::watchScreen(const QScreen& screen) {
    connect(&screen, &QScreen::availableGeometryChanged, this, [this] {
        fitContent();
        WorkArea::bringInto(*this);
    });
}

void SettingsWindow::measureAfresh() {
    // In a window that is not shown, what changed inside a box has not reached the layout around the box yet.
    for (QWidget* const child : findChildren<QWidget*>()) {
        child->updateGeometry();
    }
    fitContent();
}

}  // namespace vantrel::qt
