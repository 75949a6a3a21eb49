#pragma once
// A contact sheet: pictures at half size in rows, each labelled with its
// title and caption, under a heading; written as one PNG.

#include <string>
#include <vector>

#include "host/viewer/rgba_image.h"

namespace viewer {

struct SheetPicture {
    sorrel::RgbaImage image;
    std::string title;
    std::string caption;
};

/// Lays out `pictures` (all of one size) and returns the sheet. Throws
/// std::runtime_error when the label font cannot be read.
sorrel::RgbaImage makeContactSheet(const std::vector<SheetPicture>& pictures,
                                   const std::string& heading);

}  // namespace viewer
