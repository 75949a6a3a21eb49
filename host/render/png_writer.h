#pragma once
// Writes RGBA8 pictures as PNG files, so that a failing GL test leaves behind
// what it saw.

#include <cstdint>
#include <string>
#include <vector>

#include "host/viewer/rgba_image.h"

namespace sorrel {

/// Writes `width` x `height` pixels of four bytes each (red, green, blue,
/// alpha), rows from the top, to `path`. False when the file could not be
/// written.
bool writePng(const std::string& path, int width, int height, const std::uint8_t* rgbaRowsFromTop);
/// Writes a picture read back from GL; false when the file could not be written.
bool writePng(const std::string& path, const RgbaImage& picture);
/// The picture as the bytes of a PNG file, for a writer of its own; empty
/// when the picture is empty.
std::vector<std::uint8_t> encodePng(const RgbaImage& picture);

}  // namespace sorrel
