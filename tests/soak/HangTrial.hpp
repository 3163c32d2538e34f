#pragma once

namespace vantrel::soak {

/// Stops each program around the agent in turn, as one that hangs, and measures so many jumps with each: from the press
/// to the pointer seen on the other display. Prints a row for each; throws when a jump gets lost, or when one in a
/// hundred takes longer than 100 ms.
void runHangTrial(int jumps);

}  // namespace vantrel::soak
