#include "apps/window/keep_files.h"

#include "apps/scene/scene_writer.h"
#include "apps/viewer/scene_as_it_stands.h"

namespace viewer {

KeepFiles keepFilesFor(const std::string& opened) {
    return {savePathFor(opened), exportPathFor(opened)};
}

}  // namespace viewer
