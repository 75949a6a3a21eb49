#include "support/environment_flag.h"

#include <cstring>

namespace Tessera::Sorrel::ViewerUtils {

bool environmentFlagIsSet(const char* value) {
    return value != nullptr && std::strcmp(value, "1") == 0;
}

}  // namespace Tessera::Sorrel::ViewerUtils
