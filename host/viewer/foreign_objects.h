#pragma once
// Objects of another library, as a viewer lists them beside the plugin's own:
// a layer and a viewer delegate component, each driven through an entry table
// of its own, each with a plugin handle whose first field points at bytes
// that are no C++ object at all. They draw nothing, use no event and answer
// no option, query or pick. A plugin that reads anything of them beyond their
// tables and handles reads memory that means nothing to it.

namespace sorrel {

/// A layer's table, fifteen positions; add one with Viewport::addPluginLayer.
void* const* foreignLayerSuite();
/// A component's table, fourteen positions; add one with ViewerDelegate::addComponent.
void* const* foreignComponentSuite();

}  // namespace sorrel
