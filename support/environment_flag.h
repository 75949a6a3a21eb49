#pragma once
// On/off switches read from the environment.

namespace Tessera::Sorrel::ViewerUtils {

/// Whether an environment variable's value switches its flag on: exactly the
/// one-character text "1". Null (unset) is off.
bool environmentFlagIsSet(const char* value);

}  // namespace Tessera::Sorrel::ViewerUtils
