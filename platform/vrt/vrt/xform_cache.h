#pragma once
// vrt::XformCache: the transformations of prims at one time.

#include "lqm/mat4.h"
#include "vrt/prim.h"

namespace vrt {

class XformCache {
public:
    explicit XformCache(double time) : time_(time) {}

    /// The prim's transformation relative to its parent (row vectors).
    /// `resetsXformStack` is set when the prim ignores its parent's.
    lqm::Mat4<double> getLocalTransformation(const Prim& prim, bool* resetsXformStack) const {
        if (resetsXformStack != nullptr) *resetsXformStack = prim.data().resetsXformStack;
        return prim.data().localTransformation;
    }
    double time() const { return time_; }

private:
    double time_;
};

}  // namespace vrt
