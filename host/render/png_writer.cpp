#include "host/render/png_writer.h"

#include <png.h>

namespace sorrel {

bool writePng(const std::string& path, int width, int height, const std::uint8_t* rgbaRowsFromTop) {
    if (width <= 0 || height <= 0 || rgbaRowsFromTop == nullptr) return false;
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = PNG_FORMAT_RGBA;
    const int written = png_image_write_to_file(&image, path.c_str(), /* convert_to_8bit = */ 0,
                                                rgbaRowsFromTop, /* row_stride = */ 0,
                                                /* colormap = */ nullptr);
    png_image_free(&image);
    return written != 0;
}

bool writePng(const std::string& path, const RgbaImage& picture) {
    return writePng(path, picture.width, picture.height, picture.pixels.data());
}

}  // namespace sorrel
