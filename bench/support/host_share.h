#pragma once
// A host record whose tables let a benchmark tell the plugin's own work from
// the host's. Every function of the host tables the plugin calls is reached
// through a trampoline named HostEntry; under callgrind,
// `--toggle-collect='*HostEntry*'` stops collecting for as long as one runs, so
// that only the plugin's own instructions are counted. The trampolines also
// tell the allocation counter which side allocates.

#include <cstdint>

#include "frame/abi/plugin_host.h"

namespace bench {

/// The stand-in viewer's host record behind trampolines; give it to setHost.
Tessera::Sorrel::ViewerAPI::PluginHost* separableHostRecord();

/// Whether the plugin reaches the host through the trampolines (true, the
/// start) or straight (false, so that callgrind counts the host's work too).
/// Tables already handed out change in place.
void separateHostShare(bool separate);

/// True while a host function called through a trampoline runs.
bool insideHost();

/// The time the host spent in calls through the trampolines, by the time stamp
/// counter, and how many calls it took: only the outermost of nested calls
/// counts. Calls during which the thread lost the processor are counted apart,
/// their time left out.
struct HostTime {
    double seconds = 0.0;
    std::uint64_t calls = 0;
    std::uint64_t preempted = 0;
};

/// Starts counting the host's time at zero (true) or stops counting (false).
void timeHostCalls(bool on);
HostTime hostTime();

/// The time stamp counter, in seconds.
double stampSeconds();

/// The seconds that counting adds to a call's counted time: the least of many
/// tries, around a host function that does nothing.
double countingCost();

}  // namespace bench
