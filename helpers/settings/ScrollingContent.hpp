#pragma once

#include <QScrollArea>
#include <QVBoxLayout>

namespace vantrel::qt {

/// A window's content, which scrolls where the window has no room for all of it. What has the keyboard stays in sight.
class ScrollingContent final : public QScrollArea {
  public:
    ScrollingContent();

    /// What the content consists of, from top to bottom.
    QVBoxLayout& stack() { return stack_; }

    /// The size at which nothing has to be scrolled: at least so wide, and wider where a row needs it.
    [[nodiscard]] QSize neededSize(int width) const;

    /// The width that the bar takes away from the content once it has to be scrolled.
    [[nodiscard]] int scrollBarWidth() const;

  protected:
    bool event(QEvent* event) override;

  private:
    void showAllOf(const QWidget& control);

    QVBoxLayout& stack_;
};

}  // namespace vantrel::qt
