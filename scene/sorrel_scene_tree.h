#pragma once
// SorrelSceneTree: the scene tree bound to location nodes, breadth-first iterators,
// an unordered map by path and the path climber of location paths.

#include <string>
#include <unordered_map>

#include "scene/breadth_first_iterator.h"
#include "scene/node_pool.h"
#include "scene/scene_tree.h"
#include "scene/sorrel_location_node.h"
#include "scene/sorrel_path_climber.h"

namespace UTIL::SceneTree {

template <class Payload>
using SorrelNodeIterator = BreadthFirstIterator<SorrelLocationNode<Payload>>;

template <class Payload>
using SorrelConstNodeIterator = BreadthFirstIterator<const SorrelLocationNode<Payload>>;

/// The pool that SorrelIndexMap's nodes come from, made before the map and
/// given up after it.
struct SorrelIndexPool {
    NodePool pool;
};

/// Node-based, so nodes and keys keep their addresses over rehashing; the
/// nodes come from a pool of the map's own.
template <class Payload>
class SorrelIndexMap
    : private SorrelIndexPool,
      public std::unordered_map<
          std::string, SorrelLocationNode<Payload>, std::hash<std::string>,
          std::equal_to<std::string>,
          PoolAllocator<std::pair<const std::string, SorrelLocationNode<Payload>>>> {
public:
    using Map = std::unordered_map<
        std::string, SorrelLocationNode<Payload>, std::hash<std::string>,
        std::equal_to<std::string>,
        PoolAllocator<std::pair<const std::string, SorrelLocationNode<Payload>>>>;

    SorrelIndexMap() : Map(typename Map::allocator_type(&pool)) {}
};

template <class Payload>
class SorrelSceneTree : public SceneTree<SorrelLocationNode<Payload>, SorrelNodeIterator<Payload>,
                                         SorrelConstNodeIterator<Payload>, SorrelIndexMap<Payload>,
                                         SorrelPathClimber> {};

}  // namespace UTIL::SceneTree
