#pragma once

#include <cstdint>
#include <string>

namespace vantrel::soak {

/// Kills the agent of a Wayland session (SIGKILL) at random moments of all that it does there. After each kill the
/// person's pointer, clicks and displays must be as before, the next agent must start with its hot keys, its ordinary
/// end must leave none of them behind, and the store must be whole. Prints what was killed; throws when anything is
/// otherwise.
void runKills(const std::string& session, std::uint64_t seed, int kills);

}  // namespace vantrel::soak
