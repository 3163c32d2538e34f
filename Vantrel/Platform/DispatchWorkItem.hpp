#pragma once

#include <functional>
#include <utility>

namespace vantrel {

/// A piece of delayed work that may be cancelled before it runs. Main thread only.
class DispatchWorkItem {
  public:
    explicit DispatchWorkItem(std::function<void()> block) : block_(std::move(block)) {}

    /// Keeps the work from running, also when it is already waiting; nothing happens if it has run.
    void cancel() {
        isCancelled_ = true;
        if (auto onCancel = std::exchange(onCancel_, nullptr)) {
            onCancel();
        }
    }

    [[nodiscard]] bool isCancelled() const { return isCancelled_; }

    /// Runs the work unless it was cancelled. Called by the queue that holds the item.
    void perform() {
        onCancel_ = nullptr;
        if (!isCancelled_) {
            block_();
        }
    }

    /// What the queue does to forget the item at its cancellation, so that a cancelled item wakes nobody.
    void setCancellationHandler(std::function<void()> onCancel) { onCancel_ = std::move(onCancel); }

  private:
    std::function<void()> block_;
    std::function<void()> onCancel_;
    bool isCancelled_ = false;
};

}  // namespace vantrel
