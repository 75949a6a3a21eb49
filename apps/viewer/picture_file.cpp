#include "apps/viewer/picture_file.h"

#include <string_view>
#include <vector>

#include "apps/scene/atomic_file.h"
#include "host/render/png_writer.h"

namespace viewer {

void writePicture(const std::string& path, const sorrel::RgbaImage& picture) {
    const std::vector<std::uint8_t> png = sorrel::encodePng(picture);
    if (png.empty()) throw FileWriteError("cannot write " + path + ": the picture is empty");
    writeFileAtomically(path,
                        std::string_view(reinterpret_cast<const char*>(png.data()), png.size()));
}

}  // namespace viewer
