#include "apps/viewer/label_font.h"

#include <stb_truetype.h>

#include <cmath>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace viewer {

LabelFont::LabelFont(const std::string& path) : info_(std::make_unique<stbtt_fontinfo>()) {
    std::ifstream file(path, std::ios::binary);
    data_.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    if (data_.empty() || stbtt_InitFont(info_.get(), data_.data(), 0) == 0)
        throw std::runtime_error("cannot read the label font " + path);
}

LabelFont::~LabelFont() = default;

int LabelFont::draw(sorrel::RgbaImage& picture, int x, int y, const std::string& text, float height,
                    const std::array<std::uint8_t, 3>& color) const {
    const float scale = stbtt_ScaleForPixelHeight(info_.get(), height);
    int ascent = 0, descent = 0, lineGap = 0;
    stbtt_GetFontVMetrics(info_.get(), &ascent, &descent, &lineGap);
    const int baseline = y + static_cast<int>(std::lround(ascent * scale));
    float pen = static_cast<float>(x);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int codepoint = static_cast<unsigned char>(text[i]);
        int x0 = 0, y0 = 0, x1 = 0, y1 = 0;
        stbtt_GetCodepointBitmapBox(info_.get(), codepoint, scale, scale, &x0, &y0, &x1, &y1);
        const int width = x1 - x0, rows = y1 - y0;
        if (width > 0 && rows > 0) {
            std::vector<unsigned char> coverage(static_cast<std::size_t>(width) * rows);
            stbtt_MakeCodepointBitmap(info_.get(), coverage.data(), width, rows, width, scale,
                                      scale, codepoint);
            const int left = static_cast<int>(std::lround(pen)) + x0, top = baseline + y0;
            for (int row = 0; row < rows; ++row) {
                for (int column = 0; column < width; ++column) {
                    const int px = left + column, py = top + row;
                    if (px < 0 || py < 0 || px >= picture.width || py >= picture.height) continue;
                    const unsigned alpha = coverage[static_cast<std::size_t>(row) * width + column];
                    std::uint8_t* const pixel =
                        &picture.pixels[(static_cast<std::size_t>(py) * picture.width + px) *
                                        sorrel::RgbaImage::kChannels];
                    for (int c = 0; c < 3; ++c)
                        pixel[c] = static_cast<std::uint8_t>(
                            (color[c] * alpha + pixel[c] * (255 - alpha)) / 255);
                }
            }
        }
        int advance = 0, bearing = 0;
        stbtt_GetCodepointHMetrics(info_.get(), codepoint, &advance, &bearing);
        pen += advance * scale;
        if (i + 1 < text.size())
            pen += scale * stbtt_GetCodepointKernAdvance(info_.get(), codepoint,
                                                         static_cast<unsigned char>(text[i + 1]));
    }
    return static_cast<int>(std::lround(pen)) - x;
}

}  // namespace viewer
