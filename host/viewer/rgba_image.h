#pragma once
// A picture read back from GL: RGBA8 pixels, rows from the top (as viewports
// count y).

#include <array>
#include <cstdint>
#include <vector>

namespace sorrel {

struct RgbaImage {
    /// Bytes per pixel: red, green, blue, alpha.
    static constexpr int kChannels = 4;

    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;

    /// Red, green, blue and alpha at column x and row y, y from the top.
    std::array<std::uint8_t, 4> at(int x, int y) const;
};

}  // namespace sorrel
