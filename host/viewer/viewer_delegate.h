#pragma once
// The host's viewer delegate: the scene, its components (the plugin's
// viewer delegate components among them) and its named commands.

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/core/attribute_ref.h"
#include "host/core/host_object.h"
#include "host/core/plugin_objects.h"
#include "host/viewer/scene.h"
#include "vrt/path.h"
#include "vrt/prim.h"

namespace sorrel {

class ViewerDelegate : public HostObject {
public:
    using Method = std::function<AttrRef(const AttrRef& argument)>;

    ViewerDelegate();
    ~ViewerDelegate() override;

    Scene& scene() { return scene_; }

    /// Creates a plugin component by its entry table and calls its setup.
    ComponentObject& addComponent(const std::string& name, void* const* suite);
    ComponentObject* component(const std::string& name);
    /// Calls cleanup and destroy on every component, newest first.
    void removeComponents();
    /// Calls cleanup and destroy on one component and takes it off the list.
    void removeComponent(const std::string& name);

    /// A command the plugin can run by name; a missing one answers null.
    void defineMethod(const std::string& name, Method method) {
        methods_[name] = std::move(method);
    }
    AttrRef callMethod(const std::string& name, const AttrRef& argument);
    /// Calls made to each command, in order, for tests.
    const std::vector<std::string>& methodCalls() const { return methodCalls_; }

    // Location events as the host sends them to every component.
    /// A location that is new or whose attributes changed.
    void sendLocation(const std::string& path, std::uint32_t extraFlags = 0);
    /// A changed transform: the host reports the moved location only, with
    /// changed attributes too when `attributesChanged`.
    void sendTransformChange(const std::string& path, bool attributesChanged = false);
    /// A changed state, such as the excluded bit; the attributes come along.
    void sendStateChange(const std::string& path);
    void sendRemoval(const std::string& path);
    void sendSelection(const std::vector<std::string>& paths);
    /// Sets a location and sends it.
    void putLocation(const std::string& path, AttrRef attributes, const Matrix& local = kIdentity);
    /// Puts "/root", "/root/world" and "/root/world/lgt" as groups: the
    /// locations above the lights.
    void putLightRoots();
    /// Sets a location's local transform and reports the move.
    void moveLocation(const std::string& path, const Matrix& local);
    /// Removes a location with its subtree and reports the removal of the top only.
    void removeLocation(const std::string& path);
    /// Every event of an excluded location carries the excluded bit.
    void setExcluded(const std::string& path, bool excluded);

    // USD location events: the prim and its path are lent to every component for the call.
    /// Reports a prim of a USD stage under its own path, with UsdFlags bits.
    void sendUsdPrim(const vrt::Prim& prim, std::uint32_t flags, double time = 0.0);
    /// Reports the removal of the prim at `path`, which the stage may no longer hold.
    void sendUsdRemoval(const vrt::Path& path);
    void sendUsdSelection(const std::vector<std::string>& paths);

    // What the plugin asks of a location; each question is counted.
    /// The location's attributes (a new reference), or null when it is unknown.
    AttrRef locationAttributes(const std::string& path);
    /// The location's world transform, or nothing when it is unknown.
    std::optional<Matrix> worldTransform(const std::string& path);
    /// Locations' attributes and world transforms asked for so far, for tests.
    std::uint64_t transformQueries() const { return transformQueries_; }

    ObjectTriple triple();

private:
    struct ComponentSlot {
        std::string name;
        ViewerDelegate* owner = nullptr;
        std::unique_ptr<ComponentObject> object;
    };
    void sendEvent(const std::string& path, std::uint32_t flags);
    void sendUsdEvent(const vrt::Path& path, const vrt::Prim& prim, std::uint32_t flags,
                      double time);

    Scene scene_;
    std::vector<std::unique_ptr<ComponentSlot>> components_;
    std::map<std::string, Method> methods_;
    std::set<std::string> excluded_;
    std::vector<std::string> methodCalls_;
    std::uint64_t transformQueries_ = 0;
    HostObjectRecord record_;

    friend struct ViewerTables;
};

/// Flag bits of a location event record.
namespace LocationFlags {
constexpr std::uint32_t kExcluded = 0x2;
constexpr std::uint32_t kRemoved = 0x10000;
constexpr std::uint32_t kAttributesChanged = 0x20000;
constexpr std::uint32_t kTransformChanged = 0x40000;
constexpr std::uint32_t kStateChanged = 0x80000;
}  // namespace LocationFlags

/// Flag bits of a USD location event record.
namespace UsdFlags {
constexpr std::uint32_t kExcluded = 0x2;
constexpr std::uint32_t kPrimAdded = 0x10000;
constexpr std::uint32_t kPrimChanged = 0x20000;
constexpr std::uint32_t kPrimRemoved = 0x40000;
}  // namespace UsdFlags

}  // namespace sorrel
