#pragma once
// SceneNode: one prim of the USD mirror that the delegate component keeps, with
// its local transformation and the USD values that matter to the light list.

#include <cstddef>
#include <memory>
#include <unordered_map>

#include "lqm/mat4.h"
#include "vrt/path.h"
#include "vrt/token.h"
#include "vrt/value.h"

namespace Tessera::Sorrel::ViewerUtils {

/// Hashes a vrt::Path or vrt::Token by its own `hash()`, for the unordered containers.
struct VrtHash {
    template <class T>
    std::size_t operator()(const T& value) const {
        return value.hash();
    }
};

/// A node of the USD mirror. Lives in shared pointers.
///
/// A child and its parent hold strong references on one another, so a node with
/// children outlives its last outside reference: detachChildren and
/// removeSceneNode break these cycles, and whoever owns a root must detach its
/// children before letting it go.
class SceneNode {
public:
    using Children = std::unordered_map<vrt::Token, std::shared_ptr<SceneNode>, VrtHash>;
    using UsdAttributes = std::unordered_map<vrt::Token, vrt::Value, VrtHash>;

    explicit SceneNode(vrt::Path path) : path(std::move(path)) {}
    ~SceneNode() { detachChildren(); }
    SceneNode(const SceneNode&) = delete;
    SceneNode& operator=(const SceneNode&) = delete;

    /// Stores the transformation relative to the parent. An unchanged matrix and
    /// flag touch no cache; otherwise the caches below are invalidated. With
    /// `ignoresParent` the world matrix is the local one.
    void setLocalMatrix(const lqm::Mat4<double>& matrix, bool ignoresParent);
    /// Local times the parent's world matrix, cached until a node above changes.
    const lqm::Mat4<double>& getWorldMatrix();
    /// Marks the cached world matrices stale down to the nodes that ignore their parent.
    void invalidateWorldMatrix();
    void setSelected(bool value, bool recursive);
    /// Unlinks the whole subtree below this node, so that it can die.
    void detachChildren();

    std::shared_ptr<SceneNode> parent;
    /// By the last element of their paths.
    Children children;
    const vrt::Path path;
    lqm::Mat4<double> localMatrix;
    bool ignoresParent = false;
    lqm::Mat4<double> worldMatrix;
    bool worldMatrixValid = false;
    /// While true, this node and all below it yield no light.
    bool excluded = false;
    bool selected = false;
    /// The values kept from the prim; only "centerOfInterest" is used.
    UsdAttributes usdAttributes;
};

/// The node at `path` below `root`, or null.
std::shared_ptr<SceneNode> findSceneNode(const std::shared_ptr<SceneNode>& root,
                                         const vrt::Path& path);
/// The node at `path`, made if needed together with its missing ancestors, which
/// start with identity matrices and no attributes.
std::shared_ptr<SceneNode> findOrCreateSceneNode(const std::shared_ptr<SceneNode>& root,
                                                 const vrt::Path& path);
/// Unlinks the node at `path` and its whole subtree; true if there was one.
bool removeSceneNode(const std::shared_ptr<SceneNode>& root, const vrt::Path& path);

}  // namespace Tessera::Sorrel::ViewerUtils
