#pragma once
// A viewport's camera as the plugin sees it.

#include <memory>

#include "frame/object_wrapper.h"
#include "frame/plugin_kinds.h"
#include "support/vector_matrix.h"

namespace Tessera::Sorrel::ViewerAPI {

using ViewerUtils::Vec3d;

class ViewportCameraWrapper : public ObjectWrapper<ViewportCameraPluginBase> {
public:
    /// Throws std::runtime_error when the host lacks the camera table.
    ViewportCameraWrapper(PluginHost* creatorHost, const ObjectTriple& triple);

    /// The camera's position, world space.
    Vec3d getOrigin() const;

private:
    std::shared_ptr<void> unused_;  // the kind has a shared pointer and never fills it
};

}  // namespace Tessera::Sorrel::ViewerAPI
