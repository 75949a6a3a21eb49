#pragma once
// Meshes from Wavefront OBJ files. Triangles and quads become faces of their
// own; larger polygons become fans of triangles. Where every corner names a
// normal, the mesh is shaded smooth with them; otherwise it is drawn flat.

#include <string>

#include "host/viewer/mesh.h"

namespace viewer {

/// Reads the OBJ file at `path`. Throws std::runtime_error with the reader's
/// complaint, one line, when the file cannot be read or holds no polygon.
sorrel::Mesh loadObjMesh(const std::string& path);

}  // namespace viewer
