#include "Vantrel/Desktop/Store/StoreCheckpointer.hpp"

#include <pthread.h>

#include <utility>

namespace vantrel::desktop {
namespace {

/// The C library keeps an ended thread's stack for the next one; a small one is enough and weighs less.
constexpr std::size_t threadStackSize = 256UL * 1024UL;

}  // namespace

struct StoreCheckpointer::Thread {
    std::filesystem::path path;
    std::string vfs;
    CheckpointOutcome outcome;
    std::unique_ptr<GSource, GSourceDestroyer> ended;  // attached by the thread as its last act
    pthread_t handle{};

    static void* run(void* data) {
        auto* self = static_cast<Thread*>(data);
        self->outcome = checkpointStore(self->path, self->vfs.empty() ? nullptr : self->vfs.c_str());
        g_source_attach(self->ended.get(), nullptr);
        return nullptr;
    }
};

StoreCheckpointer::StoreCheckpointer(std::filesystem::path path, const char* vfs, CheckpointTimes times,
                                     std::function<void(CheckpointOutcome)> finished)
    : path_(std::move(path)),
      vfs_(vfs == nullptr ? "" : vfs),
      times_(times),
      finished_(std::move(finished)),
      nextLongLog_(times.longLog) {}

StoreCheckpointer::~StoreCheckpointer() {
    if (thread_) {
        pthread_join(thread_->handle, nullptr);
    }
}

void StoreCheckpointer::noteCommit(int logPages) {
    lastCommit_ = std::chrono::steady_clock::now();
    if (logPages < times_.longLog) {
        nextLongLog_ = times_.longLog;
    }
    if (logPages >= nextLongLog_ && !thread_) {
        // If the log cannot begin anew after this run, the next one waits until it has grown as much again.
        nextLongLog_ = logPages + times_.longLog;
        start();
    }
    // One timer serves many commits: it is set again when it fires, not at each of them.
    if (!idleTimer_.isSet()) {
        armIdleTimer(times_.idle);
    }
}

void StoreCheckpointer::armIdleTimer(std::chrono::milliseconds delay) {
    idleTimer_ = LoopSource::after(delay, [this] { idleTimerFired(); }, {.priority = G_PRIORITY_LOW});
}

void StoreCheckpointer::idleTimerFired() {
    const auto sinceCommit =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - lastCommit_);
    if (sinceCommit < times_.idle) {
        armIdleTimer(times_.idle - sinceCommit);
    } else if (thread_) {
        armIdleTimer(times_.idle);
    } else {
        start();
    }
}

void StoreCheckpointer::start() {
    if (thread_) {
        return;
    }
    auto thread = std::make_unique<Thread>();
    thread->path = path_;
    thread->vfs = vfs_;
    thread->ended.reset(g_idle_source_new());
    g_source_set_priority(thread->ended.get(), G_PRIORITY_DEFAULT);
    const auto callback = [](gpointer self) -> gboolean {
        static_cast<StoreCheckpointer*>(self)->threadEnded();
        return G_SOURCE_REMOVE;
    };
    g_source_set_callback(thread->ended.get(), callback, this, nullptr);

    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, threadStackSize);
    // Without a thread the log just grows until the next commit tries again.
    if (pthread_create(&thread->handle, &attributes, &Thread::run, thread.get()) == 0) {
        thread_ = std::move(thread);
    }
    pthread_attr_destroy(&attributes);
}

void StoreCheckpointer::threadEnded() {
    pthread_join(thread_->handle, nullptr);
    CheckpointOutcome outcome = std::move(thread_->outcome);
    thread_.reset();
    // A copy, and as the last step: the call may be the end of this object.
    const auto finished = finished_;
    finished(std::move(outcome));
}

}  // namespace vantrel::desktop
