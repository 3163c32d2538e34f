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

RecorderButton::RecorderButton(Events events) : events_(std::move(events)) {
    setObjectName("recorder");
    // Enter presses it too, not only Space.
    setAutoDefault(true);
    connect(this, &QPushButton::clicked, this, [this] {
        // The keyboard at once, not only when the agent has answered: what is typed meanwhile is for the recorder.
        setRecording(true);
        events_.pressed();
    });
    updateFont();
}

void RecorderButton::setTitle(const std::string& title) {
    title_ = title;
    setAccessibleName(QString::fromStdString(title_));
    updateText();
}

void RecorderButton::setRecording(bool isRecording) {
    if (isRecording && !keyTap_) {
        keyTap_ = RecorderKeyTap::make(*window(), events_.keyTap);
    }
    if (keyTap_) {
        keyTap_->setRecording(isRecording, areKeysCaptured_);
    }
}

void RecorderButton::takeCapturedKey(const WindowKey& key) {
    if (keyTap_) {
        keyTap_->takeCapturedKey(key);
    }
}

void RecorderButton::endCapture() {
    setRecording(false);
    if (keyTap_) {
        keyTap_->letGo();
    }
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

// The window system shows and hides windows on its own account, as on another workspace: they come back as they were.
void RecorderButton::showEvent(QShowEvent* event) {
    QPushButton::showEvent(event);
    if (!event->spontaneous()) {
        events_.shown(true);
    }
}

void RecorderButton::hideEvent(QHideEvent* event) {
    if (!event->spontaneous()) {
        setRecording(false);
        events_.shown(false);
        if (keyTap_) {
            keyTap_->letGo();
        }
    }
    QPushButton::hideEvent(event);
}

}  // namespace vantrel::qt
