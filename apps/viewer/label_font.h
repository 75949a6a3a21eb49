#pragma once
// Text drawn into pictures with a TrueType font: the labels of the contact
// sheet. DejaVu Sans comes with Debian's fonts-dejavu-core.

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/viewer/rgba_image.h"

struct stbtt_fontinfo;

namespace viewer {

constexpr const char* kLabelFontPath = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

class LabelFont {
public:
    /// Reads the font file; throws std::runtime_error when it cannot.
    explicit LabelFont(const std::string& path = kLabelFontPath);
    ~LabelFont();
    LabelFont(const LabelFont&) = delete;
    LabelFont& operator=(const LabelFont&) = delete;

    /// Draws printable ASCII `text` `height` pixels high with its top left
    /// corner at (x, y), blended over the picture in `color`; clipped to the
    /// picture. Returns the width drawn, in pixels.
    int draw(sorrel::RgbaImage& picture, int x, int y, const std::string& text, float height,
             const std::array<std::uint8_t, 3>& color) const;

private:
    std::vector<unsigned char> data_;
    std::unique_ptr<stbtt_fontinfo> info_;
};

}  // namespace viewer
