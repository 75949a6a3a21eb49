#include "placement/vector_attributes.h"

#include "frame/sample_accessor.h"

namespace Tessera::Sorrel::ViewerUtils {

using namespace Tessera::Sorrel::ViewerAPI;

namespace {

constexpr std::int64_t kVectorValues = 3;

}  // namespace

DoubleAttribute doubleTriple(const Vec3d& v) {
    const double values[kVectorValues] = {v.x, v.y, v.z};
    return DoubleAttribute::createTriple(values);
}

std::optional<Vec3d> readFloatTriple(const GroupAttribute& group, const char* name) {
    const FloatAttribute values = group.getChild<FloatAttribute>(name);
    if (!values.isValid()) return std::nullopt;
    const SampleAccessor<float> sample(values, kTimeZero);
    if (sample.size() != kVectorValues) return std::nullopt;
    return Vec3d{sample[0], sample[1], sample[2]};
}

}  // namespace Tessera::Sorrel::ViewerUtils
