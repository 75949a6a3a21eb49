#include "host/core/attribute_reading.h"

namespace sorrel {

namespace {
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

}  // namespace sorrel
