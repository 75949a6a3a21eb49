#include "host/core/attribute_reading.h"

namespace sorrel {

namespace {
constexpr std::size_t kTripleSize = 3;

bool holds(const AttrRef& attribute, int type) {
    return attribute.type() == type && attribute.valueCount() > 0;
}
}  // namespace

std::optional<std::int32_t> readInt(const AttrRef& attribute) {
    if (!holds(attribute, kInt)) return std::nullopt;
    return attribute.intValue();
}

std::optional<double> readDouble(const AttrRef& attribute) {
    if (!holds(attribute, kDouble)) return std::nullopt;
    return attribute.doubleValue();
}

std::optional<std::string> readString(const AttrRef& attribute) {
    if (!holds(attribute, kString)) return std::nullopt;
    return attribute.stringValue();
}

std::optional<Vec3> readDoubleTriple(const AttrRef& attribute) {
    if (!holds(attribute, kDouble) || attribute.valueCount() != kTripleSize) return std::nullopt;
    return Vec3{attribute.doubleValue(0), attribute.doubleValue(1), attribute.doubleValue(2)};
}

AttrRef floatTriple(const Vec3& v) {
    return floatsAttr({static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)});
}

}  // namespace sorrel
