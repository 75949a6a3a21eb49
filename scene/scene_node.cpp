#include "scene/scene_node.h"

#include <utility>

#include "support/vector_matrix.h"

namespace Tessera::Sorrel::ViewerUtils {

void SceneNode::setLocalMatrix(const lqm::Mat4<double>& matrix, bool ignores) {
    // Exact comparison of doubles: a NaN on either side counts as a change.
    if (matrix == localMatrix && ignores == ignoresParent) return;
    localMatrix = matrix;
    ignoresParent = ignores;
    worldMatrixValid = ignores;
    for (const auto& entry : children) entry.second->invalidateWorldMatrix();
}

const lqm::Mat4<double>& SceneNode::getWorldMatrix() {
    if (ignoresParent) return localMatrix;
    if (!worldMatrixValid) {
        // Row vectors: the local transformation applies first.
        worldMatrix = parent ? multiply(localMatrix, parent->getWorldMatrix()) : localMatrix;
        worldMatrixValid = true;
    }
    return worldMatrix;
}

void SceneNode::invalidateWorldMatrix() {
    // What lies below a node that ignores its parent does not depend on what lies above.
    if (ignoresParent) return;
    worldMatrixValid = false;
    for (const auto& entry : children) entry.second->invalidateWorldMatrix();
}

void SceneNode::setSelected(bool value, bool recursive) {
    selected = value;
    if (!recursive) return;
    for (const auto& entry : children) entry.second->setSelected(value, recursive);
}

void SceneNode::detachChildren() {
    // Taken out first: clearing the last child's parent may release this very node.
    const Children detached = std::move(children);
    children.clear();
    for (const auto& entry : detached) {
        entry.second->detachChildren();
        entry.second->parent.reset();
    }
}

std::shared_ptr<SceneNode> findSceneNode(const std::shared_ptr<SceneNode>& root,
                                         const vrt::Path& path) {
    if (path == vrt::Path::AbsoluteRootPath()) return root;
    const std::shared_ptr<SceneNode> parent = findSceneNode(root, path.parent());
    if (!parent) return nullptr;
    const auto found = parent->children.find(vrt::Token(path.name()));
    return found != parent->children.end() ? found->second : nullptr;
}

std::shared_ptr<SceneNode> findOrCreateSceneNode(const std::shared_ptr<SceneNode>& root,
                                                 const vrt::Path& path) {
    if (path == vrt::Path::AbsoluteRootPath()) return root;
    const std::shared_ptr<SceneNode> parent = findOrCreateSceneNode(root, path.parent());
    std::shared_ptr<SceneNode>& slot = parent->children[vrt::Token(path.name())];
    if (!slot) {
        slot = std::make_shared<SceneNode>(path);
        slot->parent = parent;
    }
    return slot;
}

bool removeSceneNode(const std::shared_ptr<SceneNode>& root, const vrt::Path& path) {
    const std::shared_ptr<SceneNode> parent = findSceneNode(root, path.parent());
    if (!parent) return false;
    const auto found = parent->children.find(vrt::Token(path.name()));
    if (found == parent->children.end()) return false;
    SceneNode& node = *found->second;
    node.detachChildren();
    node.parent.reset();
    parent->children.erase(found);
    return true;
}

}  // namespace Tessera::Sorrel::ViewerUtils
