#include "handles/pick_id_colour.h"

namespace Tessera::Sorrel::ViewerUtils {

namespace {

constexpr int kByteValues = 256;
constexpr float kByteScale = 255.0f;
constexpr std::uint64_t kByteMask = 0xff;
// Shifts of red, green, blue and alpha within the id's low 32 bits.
constexpr int kRedShift = 24;
constexpr int kGreenShift = 16;
constexpr int kBlueShift = 8;
constexpr int kAlphaShift = 0;

/// Each byte divided by 255 in floats, worked out by the compiler: a picking
/// pass needs four for every handle. Float division rounds the same either way.
struct ByteChannels {
    constexpr ByteChannels() : values() {
        for (int byte = 0; byte < kByteValues; ++byte)
            values[byte] = static_cast<float>(byte) / kByteScale;
    }
    float values[kByteValues];
};

constexpr ByteChannels kChannels;

float channel(std::uint64_t id, int shift) { return kChannels.values[(id >> shift) & kByteMask]; }

}  // namespace

std::array<float, 4> pickIdColour(std::uint64_t id) {
    return {channel(id, kRedShift), channel(id, kGreenShift), channel(id, kBlueShift),
            channel(id, kAlphaShift)};
}

}  // namespace Tessera::Sorrel::ViewerUtils
