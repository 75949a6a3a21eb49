#pragma once
// The delegate component fed location events by the stand-in host, and the
// floors beside it: the same paths inserted into a plain unordered map, and a
// breadth-first walk over a bare pointer tree of the same shape.

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

#include "frame/abi/raw_location_event.h"
#include "frame/abi/viewer_delegate_component_plugin_suite.h"
#include "host/viewer/viewer_delegate.h"
#include "scene/light_location_data.h"

class BeamwrightLayerVDC;

namespace bench {

/// Every tenth location is a light.
inline constexpr std::size_t kLocationsPerLight = 10;

/// "/root" and its descendants, eight children each, level by level, so that
/// parents come first.
std::vector<std::string> makePaths(std::size_t count);

/// A host scene of `paths` and the component, which has seen none of them yet.
class LocationScene {
public:
    explicit LocationScene(const std::vector<std::string>& paths);
    ~LocationScene();
    LocationScene(const LocationScene&) = delete;
    LocationScene& operator=(const LocationScene&) = delete;

    /// Reports every path as new, in order, through the component's entry table.
    void ingest() const;
    /// Puts a new component in place of the one there, so that every path is
    /// new to it again; the host's scene stays.
    void renewComponent();
    /// Reports that the attributes of the location at `index` changed.
    void reportChange(std::size_t index) const;
    BeamwrightLayerVDC& component();

private:
    void addComponent();
    void report(const Tessera::Sorrel::ViewerAPI::RawLocationEvent& event) const;

    sorrel::ViewerDelegate delegate;
    void* handle = nullptr;
    decltype(Tessera::Sorrel::ViewerAPI::ViewerDelegateComponentPluginSuite::locationEvent)
        locationEvent = nullptr;
    std::vector<Tessera::Sorrel::ViewerAPI::RawLocationEvent> events;
};

/// The ingest floor: each path inserted into an unordered map of records.
class IngestFloor {
public:
    explicit IngestFloor(const std::vector<std::string>& paths) : paths(paths) {}
    void ingest();

private:
    const std::vector<std::string>& paths;
    std::unordered_map<std::string, LightLocationData> index;
};

/// The rebuild floor: a tree of nodes linked by plain pointers, walked breadth
/// first with the same test on each node's flags as the light list makes.
class WalkFloor {
public:
    explicit WalkFloor(const std::vector<std::string>& paths);
    /// Fills the list anew; returns how many lights it holds.
    std::size_t walk();

private:
    struct Node {
        std::vector<Node*> children;
        bool excluded = false;
        bool isLight = false;
        bool showHandle = false;
    };

    std::vector<Node> nodes;
    std::vector<const Node*> pending;
    std::vector<const Node*> lights;
};

}  // namespace bench
