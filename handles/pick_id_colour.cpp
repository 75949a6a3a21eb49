#include "handles/pick_id_colour.h"

namespace Tessera::Sorrel::ViewerUtils {

namespace {

constexpr float kByteScale = 255.0f;
constexpr std::uint64_t kByteMask = 0xff;
// Shifts of red, green, blue and alpha within the id's low 32 bits.
constexpr int kChannelShifts[4] = {24, 16, 8, 0};

}  // namespace

std::array<float, 4> pickIdColour(std::uint64_t id) {
    std::array<float, 4> colour{};
    for (int channel = 0; channel < 4; ++channel) {
        const auto byte = static_cast<float>((id >> kChannelShifts[channel]) & kByteMask);
        colour[channel] = byte / kByteScale;
    }
    return colour;
}

}  // namespace Tessera::Sorrel::ViewerUtils
