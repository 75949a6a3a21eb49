#pragma once
// A viewport as the plugin sees it: size, matrices, camera, sibling layers,
// manipulators and the viewer delegate.

#include <cstdint>
#include <memory>
#include <string>

#include "frame/object_wrapper.h"
#include "frame/plugin_kinds.h"
#include "lqm/mat4.h"

namespace Tessera::Sorrel::ViewerAPI {

class ViewerDelegateWrapper;
class ViewportCameraWrapper;
class ViewportLayerWrapper;
class ManipulatorWrapper;

class ViewportWrapper : public ObjectWrapper<ViewportPluginBase> {
public:
    using ObjectWrapper::ObjectWrapper;

    /// Made on the first call and kept while this wrapper lives.
    std::shared_ptr<ViewerDelegateWrapper> getViewerDelegate();
    /// A new wrapper at each call; throws when the host lacks the camera table.
    std::shared_ptr<ViewportCameraWrapper> getActiveCamera() const;
    // The size and matrices are inline: the handles layer asks for all four for
    // every light it draws. A viewport whose host table was refused answers 0
    // and null, as one the host knows nothing of.

    /// Pixels.
    std::int32_t getWidth() const { return askHost(&HostSuite::getWidth, 0); }
    std::int32_t getHeight() const { return askHost(&HostSuite::getHeight, 0); }
    /// Asks the host for a redraw.
    void setDirty(bool dirty) const;
    std::shared_ptr<ViewportLayerWrapper> getLayer(const std::string& name) const;
    std::shared_ptr<ViewportLayerWrapper> getLayer(std::uint32_t index) const;
    std::uint32_t getNumberOfLayers() const;
    /// The host's sixteen doubles, untested.
    const double* getViewMatrix() const {
        return askHost(&HostSuite::getViewMatrix, static_cast<const double*>(nullptr));
    }
    /// A copy of the view matrix; the identity when the host has none.
    lqm::Mat4<double> getViewMatrix44() const { return matrixOrIdentity(getViewMatrix()); }
    const double* getProjectionMatrix() const {
        return askHost(&HostSuite::getProjectionMatrix, static_cast<const double*>(nullptr));
    }
    /// A copy of the projection matrix; the identity when the host has none.
    lqm::Mat4<double> getProjectionMatrix44() const {
        return matrixOrIdentity(getProjectionMatrix());
    }
    std::shared_ptr<ManipulatorWrapper> getManipulator(const std::string& name) const;

private:
    static lqm::Mat4<double> matrixOrIdentity(const double* values) {
        return values != nullptr ? lqm::Mat4<double>(values) : lqm::Mat4<double>();
    }

    std::shared_ptr<ViewerDelegateWrapper> viewerDelegate_;
};

}  // namespace Tessera::Sorrel::ViewerAPI
