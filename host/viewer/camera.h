#pragma once
// A viewport's active camera as the plugin reaches it: where it looks from.

#include "host/core/host_object.h"

namespace sorrel {

class Camera : public HostObject {
public:
    double origin[3] = {0, 0, 0};  // world space
    ObjectTriple triple();

private:
    HostObjectRecord record_;
};

}  // namespace sorrel
