#include "host/core/attribute_node.h"

namespace sorrel {

std::size_t AttrNode::valuesPerSample() const {
    switch (type) {
        case kInt:
            return ints.empty() ? 0 : ints[0].size();
        case kFloat:
            return floats.empty() ? 0 : floats[0].size();
        case kDouble:
            return doubles.empty() ? 0 : doubles[0].size();
        case kString:
            return strings.empty() ? 0 : strings[0].size();
        default:
            return 0;
    }
}

}  // namespace sorrel
