#include "apps/viewer/pick_colours.h"

#include <array>
#include <cmath>

namespace viewer {

namespace {

/// What is left of the scene's brightness under the ids.
constexpr double kSceneDimming = 0.3;
/// Consecutive ids step round the colour wheel by the golden ratio, so that
/// neighbours differ clearly.
constexpr double kHueStep = 0.618033988749895;
constexpr double kSaturation = 0.75;
constexpr std::array<std::uint8_t, 3> kPickedColor = {255, 255, 255};

std::array<std::uint8_t, 3> colourOfId(std::uint64_t id) {
    const double hue = std::fmod(static_cast<double>(id) * kHueStep, 1.0) * 6.0;
    const double f = hue - std::floor(hue);
    const double low = 1.0 - kSaturation;
    const double falling = 1.0 - kSaturation * f;
    const double rising = 1.0 - kSaturation * (1.0 - f);
    const std::array<std::array<double, 3>, 6> sectors = {{{1, rising, low},
                                                           {falling, 1, low},
                                                           {low, 1, rising},
                                                           {low, falling, 1},
                                                           {rising, low, 1},
                                                           {1, low, falling}}};
    const auto& c = sectors[static_cast<std::size_t>(hue) % 6];
    return {static_cast<std::uint8_t>(255 * c[0]), static_cast<std::uint8_t>(255 * c[1]),
            static_cast<std::uint8_t>(255 * c[2])};
}

}  // namespace

void paintPickIds(sorrel::RgbaImage& picture, const std::vector<std::uint64_t>& ids,
                  std::uint64_t picked) {
    for (std::size_t i = 0; i < ids.size(); ++i) {
        std::uint8_t* const pixel = &picture.pixels[i * sorrel::RgbaImage::kChannels];
        if (ids[i] == 0) {
            for (int c = 0; c < 3; ++c)
                pixel[c] = static_cast<std::uint8_t>(pixel[c] * kSceneDimming);
            continue;
        }
        const std::array<std::uint8_t, 3> colour =
            ids[i] == picked ? kPickedColor : colourOfId(ids[i]);
        for (int c = 0; c < 3; ++c) pixel[c] = colour[c];
    }
}

}  // namespace viewer
