#include "apps/viewer/contact_sheet.h"

#include <stb_image_resize.h>

#include <algorithm>
#include <array>

#include "apps/viewer/label_font.h"

namespace viewer {

namespace {

constexpr int kColumns = 5;
constexpr int kShrink = 2;          // tiles are the pictures at half size
constexpr int kMargin = 12;         // pixels around and between tiles
constexpr int kHeadingHeight = 40;  // pixels
constexpr int kLabelHeight = 46;    // pixels below each tile
constexpr float kHeadingText = 22.0f;
constexpr float kTitleText = 17.0f;
constexpr float kCaptionText = 14.0f;
constexpr int kCaptionOffset = 22;  // pixels from the title's top to the caption's
constexpr std::array<std::uint8_t, 3> kBackground = {28, 30, 34};
constexpr std::array<std::uint8_t, 3> kTitleColor = {240, 240, 240};
constexpr std::array<std::uint8_t, 3> kCaptionColor = {170, 178, 190};

sorrel::RgbaImage filled(int width, int height) {
    sorrel::RgbaImage sheet{width, height,
                            std::vector<std::uint8_t>(static_cast<std::size_t>(width) * height *
                                                      sorrel::RgbaImage::kChannels)};
    for (std::size_t i = 0; i < sheet.pixels.size(); i += sorrel::RgbaImage::kChannels) {
        std::copy(kBackground.begin(), kBackground.end(), sheet.pixels.begin() + i);
        sheet.pixels[i + 3] = 255;
    }
    return sheet;
}

void paste(sorrel::RgbaImage& sheet, const sorrel::RgbaImage& tile, int left, int top) {
    const std::size_t rowBytes =
        static_cast<std::size_t>(tile.width) * sorrel::RgbaImage::kChannels;
    for (int row = 0; row < tile.height; ++row)
        std::copy_n(
            tile.pixels.begin() + row * rowBytes, rowBytes,
            sheet.pixels.begin() + ((static_cast<std::size_t>(top) + row) * sheet.width + left) *
                                       sorrel::RgbaImage::kChannels);
}

sorrel::RgbaImage shrunk(const sorrel::RgbaImage& image) {
    sorrel::RgbaImage tile{image.width / kShrink, image.height / kShrink, {}};
    tile.pixels.resize(static_cast<std::size_t>(tile.width) * tile.height *
                       sorrel::RgbaImage::kChannels);
    stbir_resize_uint8(image.pixels.data(), image.width, image.height, 0, tile.pixels.data(),
                       tile.width, tile.height, 0, sorrel::RgbaImage::kChannels);
    return tile;
}

}  // namespace

sorrel::RgbaImage makeContactSheet(const std::vector<SheetPicture>& pictures,
                                   const std::string& heading) {
    const LabelFont font;
    const int tileWidth = pictures.empty() ? 0 : pictures.front().image.width / kShrink;
    const int tileHeight = pictures.empty() ? 0 : pictures.front().image.height / kShrink;
    const int columns = std::min<int>(kColumns, static_cast<int>(pictures.size()));
    const int rows = (static_cast<int>(pictures.size()) + kColumns - 1) / kColumns;
    const int cellHeight = tileHeight + kLabelHeight;
    sorrel::RgbaImage sheet = filled(kMargin + columns * (tileWidth + kMargin),
                                     kHeadingHeight + rows * (cellHeight + kMargin));
    font.draw(sheet, kMargin, kMargin / 2, heading, kHeadingText, kTitleColor);
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        const int left = kMargin + static_cast<int>(i % kColumns) * (tileWidth + kMargin);
        const int top = kHeadingHeight + static_cast<int>(i / kColumns) * (cellHeight + kMargin);
        paste(sheet, shrunk(pictures[i].image), left, top);
        font.draw(sheet, left, top + tileHeight + 4, pictures[i].title, kTitleText, kTitleColor);
        font.draw(sheet, left, top + tileHeight + 4 + kCaptionOffset, pictures[i].caption,
                  kCaptionText, kCaptionColor);
    }
    return sheet;
}

}  // namespace viewer
