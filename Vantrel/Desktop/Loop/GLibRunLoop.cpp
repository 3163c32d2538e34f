#include "Vantrel/Desktop/Loop/GLibRunLoop.hpp"

#include <utility>

#include "Vantrel/Desktop/Loop/KernelTimer.hpp"

namespace vantrel::desktop {

GLibRunLoop::GLibRunLoop(GMainContext* context)
    : context_(g_main_context_ref(context != nullptr ? context : g_main_context_default())) {}

std::shared_ptr<Timer> GLibRunLoop::scheduledTimer(Seconds interval, bool repeats, std::function<void(Timer&)> action) {
    auto timer = std::make_shared<KernelTimer>(repeats, std::move(action));
    timer->start(context_.get(), interval);
    return timer;
}

}  // namespace vantrel::desktop
