#pragma once
// vrt::XformCache: the transformations of prims at one time.

#include "lqm/mat4.h"
#include "vrt/prim.h"

namespace vrt {

class XformCache {
public:
    explicit XformCache(double time) : time_(time) {}

    /// The prim's transformation relative to its parent (row vectors).
    /// `resetsXformStack` is set when the prim ignores its parent's. An invalid
    /// prim has the identity.
    lqm::Mat4<double> getLocalTransformation(const Prim& prim, bool* resetsXformStack) const {
        const bool valid = prim.isValid();
        if (resetsXformStack != nullptr) *resetsXformStack = valid && prim.data().resetsXformStack;
        return valid ? prim.data().localTransformation : lqm::Mat4<double>();
    }
    double time() const { return time_; }

private:
    double time_;
};

}  // namespace vrt
