#pragma once

namespace vantrel::desk {

/// How often this process has sent requests to an X server and waited for replies (round trips) since the last call.
int takeRoundTrips();

}  // namespace vantrel::desk
