#include "vrt/path.h"

namespace vrt {

const Path& Path::AbsoluteRootPath() {
    static const Path root("/");
    return root;
}

Path Path::parent() const {
    const std::size_t slash = text_.rfind('/');
    if (slash == std::string::npos || slash == 0) return AbsoluteRootPath();
    return Path(text_.substr(0, slash));
}

std::string Path::name() const {
    const std::size_t slash = text_.rfind('/');
    return slash == std::string::npos ? text_ : text_.substr(slash + 1);
}

}  // namespace vrt
