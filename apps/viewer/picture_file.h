#pragma once
// Pictures the viewer writes for the user (the tour's, the contact sheet,
// the window's), as PNG, through the writer of every file the user keeps.

#include <string>

#include "host/viewer/rgba_image.h"

namespace viewer {

/// Writes `picture` to `path` as PNG, all or nothing; throws FileWriteError
/// naming the file and the cause.
void writePicture(const std::string& path, const sorrel::RgbaImage& picture);

}  // namespace viewer
