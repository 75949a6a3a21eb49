#pragma once
// What a viewer delegate component is on both sides of the boundary: the
// component of this plugin and the wrappers that stand for components.

#include <memory>

#include "frame/plugin_kinds.h"

namespace Tessera::Sorrel::ViewerAPI {

class ViewerDelegateWrapper;

class ViewerDelegateComponentPluginBase : public PluginBaseOf<ViewerDelegateComponentKind> {
public:
    /// The component's viewer delegate, made on the first call and kept. Inline
    /// and by reference: every new location asks for it.
    const std::shared_ptr<ViewerDelegateWrapper>& getViewerDelegate() {
        if (!viewerDelegate_) fetchViewerDelegate();
        return viewerDelegate_;
    }

private:
    void fetchViewerDelegate();

    std::shared_ptr<ViewerDelegateWrapper> viewerDelegate_;
};

}  // namespace Tessera::Sorrel::ViewerAPI
