#include "helpers/messages/FlashText.hpp"

#include <algorithm>

#include "helpers/messages/Palette.hpp"

namespace vantrel::overlay {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds restingTime(20);   // a glide moves the pointer more often than that
constexpr milliseconds longestWait(250);  // a glide ends before
constexpr milliseconds lookInterval(100);
constexpr double distanceFromTop = 48;  // clear of a panel
constexpr double sidePadding = 18;
constexpr double verticalPadding = 9;
constexpr double cornerRadius = 10;
constexpr double widestShare = 0.6;  // of the display's width

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
    const RootPoint pointer = screen_.pointer();
    const bool isResting = pointer == lastPointer_;
    lastPointer_ = pointer;
    if (isWaiting_ && !isResting && Clock::now() < latestAppearance_) {
        nextLook_ = Clock::now() + restingTime;
        return;
    }
    nextLook_ = Clock::now() + lookInterval;
    if (isWaiting_) {
        isWaiting_ = false;
        window_ = std::make_unique<PopupWindow>(screen_, "Vantrel", "_NET_WM_WINDOW_TYPE_NOTIFICATION",
                                                PopupWindow::Input::none);
        monitor_ = screen_.monitorAt(pointer);
        place();
        window_->show();
    } else if (const RootRect monitor = screen_.monitorAt(pointer); monitor != monitor_) {
        monitor_ = monitor;
        place();
    }
}

void FlashText::place() {
    const int widest = static_cast<int>(monitor_.width * widestShare);
    const TextLine line = typesetter_.line(text_, font_, widest);
    const Size size = line.size();
    const int side = screen_.scaled(sidePadding);
    const int vertical = screen_.scaled(verticalPadding);
    const RootRect bounds{.x = monitor_.x + (monitor_.width - size.width - 2 * side) / 2,
                          .y = monitor_.y + std::min(screen_.scaled(distanceFromTop), monitor_.height / 8),
                          .width = size.width + 2 * side,
                          .height = size.height + 2 * vertical};
    const int radius = screen_.scaled(cornerRadius);
    window_->place(bounds, radius, [&](cairo_t* context) {
        drawGround(context, bounds.width, bounds.height, radius, window_->hasAlpha());
        setColor(context, textColor);
        line.draw(context, side, vertical);
    });
}

}  // namespace vantrel::overlay
