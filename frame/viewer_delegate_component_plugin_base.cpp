#include "frame/viewer_delegate_component_plugin_base.h"

#include "frame/object_triple.h"
#include "frame/viewer_delegate_wrapper.h"

namespace Tessera::Sorrel::ViewerAPI {

void ViewerDelegateComponentPluginBase::fetchViewerDelegate() {
    viewerDelegate_ = askAndWrap<ViewerDelegateWrapper>(pluginHost, hostSuite_,
                                                        &HostSuite::getViewerDelegate, hostHandle_);
}

}  // namespace Tessera::Sorrel::ViewerAPI
