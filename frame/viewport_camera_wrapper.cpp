#include "frame/viewport_camera_wrapper.h"

#include <sstream>
#include <stdexcept>

namespace Tessera::Sorrel::ViewerAPI {

ViewportCameraWrapper::ViewportCameraWrapper(PluginHost* creatorHost, const ObjectTriple& triple)
    : ObjectWrapper(creatorHost, triple) {
    if (hostSuite_ == nullptr) {
        std::ostringstream message;
        message << "This ViewportCamera plugin requires version 2 of the host API. "
                << "A more recent version of Sorrel is probably required by this "
                << "plugin.";
        throw std::runtime_error(message.str());
    }
}

Vec3d ViewportCameraWrapper::getOrigin() const {
    Vec3d origin;
    hostSuite_->getOrigin(hostHandle_, &origin.x, &origin.y, &origin.z);
    return origin;
}

}  // namespace Tessera::Sorrel::ViewerAPI
