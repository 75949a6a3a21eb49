#include "host/viewer/camera.h"

#include "host/core/suite_table.h"

namespace sorrel {

namespace {
const SuiteTable& cameraSuite() {
    static const SuiteTable table("ViewportCameraPlugin");
    return table;
}
}  // namespace

ObjectTriple Camera::triple() {
    record_.object = this;
    return {this, &record_, cameraSuite().data()};
}

}  // namespace sorrel
