#pragma once
// The picking pass made visible: every pick id in a colour of its own over a
// darkened picture of the scene, the picked one in white.

#include <cstdint>
#include <vector>

#include "host/viewer/rgba_image.h"

namespace viewer {

/// Paints `ids` (one per pixel, rows from the top, 0 for none) over `picture`,
/// which has the same size.
void paintPickIds(sorrel::RgbaImage& picture, const std::vector<std::uint64_t>& ids,
                  std::uint64_t picked);

}  // namespace viewer
