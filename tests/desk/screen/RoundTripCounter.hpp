#pragma once

#include <functional>

namespace vantrel::desk {

/// How often this process has sent requests to an X server and waited for replies (round trips) since the last call.
int takeRoundTrips();

/// Calls the action once, right before this process next sends requests to an X server. What the action has another
/// client do there comes before the replies to these requests.
void beforeNextSend(std::function<void()> action);

}  // namespace vantrel::desk
