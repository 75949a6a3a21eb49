#pragma once
// SorrelSceneTree: the scene tree bound to location nodes, breadth-first iterators,
// an unordered map by path and the path climber of location paths.

#include <string>
#include <unordered_map>

#include "scene/breadth_first_iterator.h"
#include "scene/scene_tree.h"
#include "scene/sorrel_location_node.h"
#include "scene/sorrel_path_climber.h"

namespace UTIL::SceneTree {

template <class Payload>
using SorrelNodeIterator = BreadthFirstIterator<SorrelLocationNode<Payload>>;

template <class Payload>
using SorrelConstNodeIterator = BreadthFirstIterator<const SorrelLocationNode<Payload>>;

/// Node-based, so nodes and keys keep their addresses over rehashing.
template <class Payload>
using SorrelIndexMap = std::unordered_map<std::string, SorrelLocationNode<Payload>>;

template <class Payload>
class SorrelSceneTree : public SceneTree<SorrelLocationNode<Payload>, SorrelNodeIterator<Payload>,
                                         SorrelConstNodeIterator<Payload>, SorrelIndexMap<Payload>,
                                         SorrelPathClimber> {};

}  // namespace UTIL::SceneTree
