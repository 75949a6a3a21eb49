#include "host/viewer/gl_surface.h"

#include <GL/glew.h>

#include <algorithm>

namespace sorrel {

RgbaImage readColourBuffer(int width, int height) {
    const std::size_t rowBytes = static_cast<std::size_t>(width) * RgbaImage::kChannels;
    RgbaImage image{width, height, std::vector<std::uint8_t>(rowBytes * height)};
    glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, image.pixels.data());
    // GL counts rows from the bottom.
    const auto row = [&](int index) { return image.pixels.begin() + index * rowBytes; };
    for (int top = 0, bottom = height - 1; top < bottom; ++top, --bottom) {
        std::swap_ranges(row(top), row(top) + rowBytes, row(bottom));
    }
    return image;
}

}  // namespace sorrel
