#pragma once
// BeamwrightLayerVDC: mirrors the scene's locations and keeps the light list.

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "frame/viewer_delegate_component.h"
#include "scene/light_location_data.h"
#include "scene/light_scene_tree.h"
#include "scene/scene_node.h"
#include "vrt/path.h"

/// The plugin's viewer delegate component. Events only change the mirrors and mark
/// the light list stale; the list is rebuilt when a layer asks for it.
class BeamwrightLayerVDC : public Tessera::Sorrel::ViewerAPI::ViewerDelegateComponent {
public:
    /// Location lights in breadth-first order from "/root", then USD lights.
    using LightList = std::vector<const LightLocationData*>;
    using SceneNode = Tessera::Sorrel::ViewerUtils::SceneNode;

    BeamwrightLayerVDC();
    ~BeamwrightLayerVDC() override;

    void setup() override {}
    void cleanup() override {}
    /// Updates the mirror; always false.
    bool locationEvent(const Tessera::Sorrel::ViewerAPI::LocationEvent& event, bool) override;
    /// Reads the prim into the USD mirror; always false.
    bool usdLocationEvent(const Tessera::Sorrel::ViewerAPI::UsdLocationEvent& event, bool) override;
    /// Writes `selected` in place: the list points at the very records.
    void locationsSelected(const std::vector<std::string>& locations) override;
    /// Selects exactly the named prims, not what lies below them.
    void usdLocationsSelected(const std::vector<std::string>& paths) override;

    /// The lights with a handle to show, rebuilt if stale. The list and its records
    /// hold until the next event reaches the component; keep a `locationHash`, not a pointer.
    const LightList& getLights();

    /// The USD mirror, for readers; its root stands for the stage's root.
    std::shared_ptr<const SceneNode> getUsdRoot() const { return usdRoot; }

protected:
    /// Destroys the USD records and empties the list in the same call.
    void markUsdDirty();
    /// Appends one record for each USD light, breadth first from the USD root;
    /// called by a rebuild after markUsdDirty.
    virtual void collectUsdLights(std::vector<LightLocationData>& records);

private:
    using LocationNode = UTIL::SceneTree::SorrelLocationNode<LightLocationData>;

    /// Bits of `dirtyFlags`.
    static constexpr std::uint32_t kLocationLightsStale = 1u << 0;
    static constexpr std::uint32_t kUsdLightsStale = 1u << 1;

    /// Empties both lists that point into the tree, so that no pointer outlives a change.
    void markLocationsDirty();
    void removeLocation(const std::string& path);
    /// Fetches the world matrix of `top` and of everything below it and updates their records.
    void refreshSubtree(LocationNode* top);
    void collectLocationLights();
    /// The visitor of the USD walk: appends a record if `node` is a light; false
    /// when nothing below it may yield one.
    static bool collectUsdLight(SceneNode& node, std::vector<LightLocationData>& records);

    std::unordered_set<std::string> selectedLocations;
    std::unordered_set<vrt::Path, Tessera::Sorrel::ViewerUtils::VrtHash> selectedUsdPaths;
    LightSceneTree lightSceneTree;
    std::vector<const LightLocationData*> locationLights;
    /// The queue of the walk that collects locationLights, kept for its capacity.
    std::vector<std::uint32_t> pendingSlots;
    /// Never replaced; made for the stage's root path.
    const std::shared_ptr<SceneNode> usdRoot;
    std::vector<LightLocationData> usdLights;
    LightList lights;
    std::uint32_t dirtyFlags = 0;
};
