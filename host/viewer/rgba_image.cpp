#include "host/viewer/rgba_image.h"

#include "host/viewer/png_writer.h"

namespace sorrel {

std::array<std::uint8_t, 4> RgbaImage::at(int x, int y) const {
    const std::size_t offset = (static_cast<std::size_t>(y) * width + x) * kChannels;
    return {pixels[offset], pixels[offset + 1], pixels[offset + 2], pixels[offset + 3]};
}

bool RgbaImage::savePng(const std::string& path) const {
    return writePng(path, width, height, pixels.data());
}

}  // namespace sorrel
