#pragma once

namespace vantrel::sound_messages {

/// What the agent and the program that plays sounds tell each other: the name of a sound to play (a string), and that
/// it has begun (no body).
inline constexpr auto play = "play";
inline constexpr auto begun = "begun";

}  // namespace vantrel::sound_messages
