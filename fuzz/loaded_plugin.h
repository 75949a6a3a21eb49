#pragma once
// Beamwright.so loaded into the stand-in host once per process, as a host
// loads it: getPlugins, then every row's setHost with the viewer's record.
// From then on the fuzzers reach the plugin only through its entry tables.

#include <string>

namespace fuzzing {

/// Loads the plugin on the first call (also sets SORREL_ROOT to the
/// project's shader tree); aborts when a row refuses the host.
void loadPlugin();

/// The entry table of the row named `name`.
void* const* suiteOf(const std::string& name);

}  // namespace fuzzing
