#include "host/viewer/rgba_image.h"

namespace sorrel {

std::array<std::uint8_t, 4> RgbaImage::at(int x, int y) const {
    const std::size_t offset = (static_cast<std::size_t>(y) * width + x) * kChannels;
    return {pixels[offset], pixels[offset + 1], pixels[offset + 2], pixels[offset + 3]};
}

}  // namespace sorrel
