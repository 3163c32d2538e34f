#include "Vantrel/Desktop/Loop/GLibRunLoop.hpp"

#include <utility>

#include "Vantrel/Desktop/Loop/KernelTimer.hpp"

namespace vantrel::desktop {

std::shared_ptr<Timer> GLibRunLoop::scheduledTimer(Seconds interval, bool repeats, std::function<void(Timer&)> action) {
    auto timer = std::make_shared<KernelTimer>(repeats, std::move(action));
    timer->start(context_, interval);
    return timer;
}

}  // namespace vantrel::desktop
