#pragma once
// LightSceneTree: the delegate component's tree of locations, one light location
// record for each.

#include "scene/light_location_data.h"
#include "scene/sorrel_scene_tree.h"

class LightSceneTree : public UTIL::SceneTree::SorrelSceneTree<LightLocationData> {};
