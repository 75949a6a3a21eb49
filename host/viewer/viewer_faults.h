#pragma once
// Faults that the host's viewer tables can be told to show, so that tests and
// fuzzing see how a plugin lives with a host that answers less than it is
// asked: a lookup that finds nothing, a world transform that is missing or of
// the wrong type, a pick id of 0. Host tables are refused by name through
// PluginHost::refuse.
//
// A lookup that answers nothing hands the plugin null host handles, which it
// may pass back: the viewer tables answer a null host handle as no object
// (zero, null, no object found), faults on or off.

#include <cstdint>
#include <set>

namespace sorrel {

/// The objects that the viewer tables look up for the plugin.
enum class Lookup {
    kViewport,        // of a layer
    kCamera,          // of a viewport
    kViewerDelegate,  // of a viewport or a component
    kComponent,       // of a viewer delegate, by name
    kLayer,           // of a viewport, by name or index
    kManipulator,     // of a viewport, by name
    kHandle,          // of a manipulator, by index
};
constexpr Lookup kEveryLookup[] = {Lookup::kViewport,  Lookup::kCamera, Lookup::kViewerDelegate,
                                   Lookup::kComponent, Lookup::kLayer,  Lookup::kManipulator,
                                   Lookup::kHandle};

/// What "ViewerDelegateHost" answers for a location's world transform.
enum class WorldTransformAnswer {
    kMatrix,     // sixteen doubles, or null for an unknown location
    kNothing,    // null
    kWrongType,  // the sixteen values as floats
};

struct ViewerFaults {
    /// Lookups answered with three nulls.
    std::set<Lookup> nullLookups;
    WorldTransformAnswer worldTransform = WorldTransformAnswer::kMatrix;
    /// addPickedAttr answers 0 and keeps nothing.
    bool zeroPickIds = false;

    bool answersNothing(Lookup lookup) const { return nullLookups.count(lookup) != 0; }
    void clear() { *this = ViewerFaults(); }
};

/// The process's faults, read by every viewer table call.
ViewerFaults& viewerFaults();

}  // namespace sorrel
