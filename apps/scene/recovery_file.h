#pragma once
// Where the window keeps a scene's recovery file: the scene as it stood at
// the last change, written after every change so that a crash or a kill
// loses nothing. It lives in the user's state folder ($XDG_STATE_HOME, by
// default ~/.local/state, then beamwright/), named after the scene's file and
// a hash of its full path, so that two scenes of one name keep theirs apart.

#include <string>

namespace viewer {

/// The recovery file of the scene opened from `scene`.
std::string recoveryFileFor(const std::string& scene);

/// Whether `recovery` exists and was written after `scene` last changed.
bool recoveryIsNewer(const std::string& recovery, const std::string& scene);

}  // namespace viewer
