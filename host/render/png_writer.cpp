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

std::vector<std::uint8_t> encodePng(const RgbaImage& picture) {
    if (picture.width <= 0 || picture.height <= 0) return {};
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGBA;
    // The first call measures, the second encodes.
    png_alloc_size_t size = 0;
    if (!png_image_write_to_memory(&image, nullptr, &size, /* convert_to_8bit = */ 0,
                                   picture.pixels.data(), /* row_stride = */ 0,
                                   /* colormap = */ nullptr))
        return {};
    std::vector<std::uint8_t> bytes(size);
    const int written = png_image_write_to_memory(&image, bytes.data(), &size, 0,
                                                  picture.pixels.data(), 0, nullptr);
    png_image_free(&image);
    if (!written) return {};
    bytes.resize(size);
    return bytes;
}

}  // namespace sorrel
