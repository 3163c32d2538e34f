#include "helpers/settings/RecorderButton.hpp"

#include <QHideEvent>
#include <QShowEvent>
#include <QStyle>
#include <QStyleOptionButton>
#include <algorithm>
#include <utility>

#include "Vantrel/Interface/PreferencesWindowLayout.hpp"
#include "helpers/settings/DesktopFonts.hpp"
#include "helpers/settings/TitleWrapping.hpp"

namespace vantrel::qt {

RecorderButton::RecorderButton() {
    // Enter presses it too, not only Space.
    setAutoDefault(true);
    connect(this, &QPushButton::clicked, this, [this] {
        if (const auto delegate = delegate_.lock()) {
            delegate->toggleRecording();
        }
    });
    updateFont();
}

RecorderButton::~RecorderButton() = default;

void RecorderButton::setDelegate(std::weak_ptr<ShortcutRecorderButtonDelegate> delegate) {
    delegate_ = std::move(delegate);
}

void RecorderButton::setTitle(const std::string& title) {
    title_ = title;
    setAccessibleName(QString::fromStdString(title_));
    updateText();
}

std::unique_ptr<EventMonitor> RecorderButton::addLocalMonitorForEvents(std::uint32_t mask, EventHandler handler) {
    if (!keyTap_) {
        keyTap_ = RecorderKeyTap::make(*window());
    }
    return keyTap_ ? keyTap_->record(mask, std::move(handler)) : nullptr;
}

void RecorderButton::updateFont() {
    setFont(recorderFont());
    updateText();
}

void RecorderButton::updateText() {
    QStyleOptionButton option;
    initStyleOption(&option);
    option.rect = QRect(0, 0, PreferencesWindowLayout::recorderWidth, sizeHint().height());
    const QRect contents = style()->subElementRect(QStyle::SE_PushButtonContents, &option, this);
    const QFontMetrics metrics = fontMetrics();
    setText(QString::fromStdString(wrappedShortcut(title_, contents.width(), [&metrics](std::string_view line) {
        return metrics.horizontalAdvance(QString::fromUtf8(line.data(), static_cast<qsizetype>(line.size())));
    })));
    // Wider only where the desktop's font is so large that a single key's name does not fit.
    setFixedWidth(std::max(PreferencesWindowLayout::recorderWidth, sizeHint().width()));
    updateGeometry();
}

void RecorderButton::showEvent(QShowEvent* event) {
    QPushButton::showEvent(event);
    if (event->spontaneous()) {
        return;
    }
    if (const auto delegate = delegate_.lock()) {
        delegate->viewWillMoveToWindow(true);
    }
}

void RecorderButton::hideEvent(QHideEvent* event) {
    // The window system hides windows on its own account, as on another workspace: they come back as they were.
    if (!event->spontaneous()) {
        if (const auto delegate = delegate_.lock()) {
            delegate->viewWillMoveToWindow(false);
        }
        if (keyTap_) {
            keyTap_->letGo();
        }
    }
    QPushButton::hideEvent(event);
}

}  // namespace vantrel::qt
