#include "vrt/value.h"

namespace vrt {

int Value::getType() const {
    constexpr int kByIndex[] = {kEmptyType, kIntType, kFloatType, kDoubleType, kStringType};
    return kByIndex[held_.index()];
}

}  // namespace vrt
