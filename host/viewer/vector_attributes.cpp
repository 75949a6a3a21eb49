#include "host/viewer/vector_attributes.h"

namespace sorrel {

namespace {
constexpr std::size_t kTripleSize = 3;
}  // namespace

std::optional<Vec3> readDoubleTriple(const AttrRef& attribute) {
    if (attribute.type() != kDouble || attribute.valueCount() != kTripleSize) return std::nullopt;
    return Vec3{attribute.doubleValue(0), attribute.doubleValue(1), attribute.doubleValue(2)};
}

AttrRef floatTriple(const Vec3& v) {
    return floatsAttr({static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)});
}

}  // namespace sorrel
