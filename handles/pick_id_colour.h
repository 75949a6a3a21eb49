#pragma once
// The colour in which a handle is drawn in a picking pass: its pick id, byte
// for byte, so that the viewer reads the id back from the pixel.

#include <array>
#include <cstdint>

namespace Tessera::Sorrel::ViewerUtils {

/// The picking colour of a pick id: bytes 3, 2, 1, 0 of its low 32 bits as red,
/// green, blue, alpha, each divided by 255 in floats.
std::array<float, 4> pickIdColour(std::uint64_t id);

}  // namespace Tessera::Sorrel::ViewerUtils
