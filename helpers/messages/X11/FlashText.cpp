#include "helpers/messages/X11/FlashText.hpp"

#include "helpers/messages/TextBox.hpp"

namespace vantrel::overlay {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds restingTime(20);   // a glide moves the pointer more often than that
constexpr milliseconds longestWait(250);  // a glide ends before
constexpr milliseconds lookInterval(100);

}  // namespace

FlashText::FlashText(const Screen& screen, const Typesetter& typesetter) : screen_(screen), typesetter_(typesetter) {}

void FlashText::show(const std::string& text, const Font& font) {
    text_ = text;
    font_ = font;
    if (window_) {
        // The text changes at once; look() moves it if the pointer ends up elsewhere.
        place();
        return;
    }
    lastPointer_ = screen_.pointer();
    latestAppearance_ = Clock::now() + longestWait;
    isWaiting_ = true;
    nextLook_ = Clock::now() + restingTime;
}

void FlashText::hide() {
    window_.reset();
    nextLook_.reset();
    isWaiting_ = false;
}

void FlashText::look() {
    const Point pointer = screen_.pointer();
    const bool isResting = pointer == lastPointer_;
    lastPointer_ = pointer;
    if (isWaiting_ && !isResting && Clock::now() < latestAppearance_) {
        nextLook_ = Clock::now() + restingTime;
        return;
    }
    nextLook_ = Clock::now() + lookInterval;
    if (isWaiting_) {
        isWaiting_ = false;
        window_ = std::make_unique<PopupWindow>(screen_, "Vantrel message", "_NET_WM_WINDOW_TYPE_NOTIFICATION",
                                                PopupWindow::Input::none);
        monitor_ = screen_.monitorAt(pointer);
        place();
        window_->show();
    } else if (const Rect monitor = screen_.monitorAt(pointer); monitor != monitor_) {
        monitor_ = monitor;
        place();
    }
}

void FlashText::place() {
    const TextBox box(typesetter_, text_, font_, monitor_);
    window_->place(box.bounds(), box.cornerRadius(), [&](cairo_t* context) { box.draw(context, window_->hasAlpha()); });
}

}  // namespace vantrel::overlay
