#include "apps/viewer/number_text.h"

#include <cstdio>

namespace viewer {

std::string fixed(double value, int decimals) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    // Whatever prints as zero is written without a sign.
    const std::string written = text;
    if (written.front() == '-' && written.find_first_not_of("-0.") == std::string::npos)
        return written.substr(1);
    return written;
}

std::string fixedTriple(const sorrel::Vec3& v, int decimals) {
    return "(" + fixed(v.x, decimals) + ", " + fixed(v.y, decimals) + ", " + fixed(v.z, decimals) +
           ")";
}

}  // namespace viewer
