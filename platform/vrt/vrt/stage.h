#pragma once
// vrt::Stage: the prims of a USD stage by path, for whoever authors one.

#include <map>
#include <memory>
#include <string>

#include "vrt/prim.h"

namespace vrt {

class Stage {
public:
    /// The prim at `path`, made when new.
    Prim definePrim(const Path& path) {
        auto& data = prims_[path.string()];
        if (!data) {
            data = std::make_shared<PrimData>();
            data->path = path;
        }
        return Prim(data);
    }
    /// The prim at `path`, or an invalid prim.
    Prim getPrim(const Path& path) const {
        const auto found = prims_.find(path.string());
        return found != prims_.end() ? Prim(found->second) : Prim();
    }
    void removePrim(const Path& path) { prims_.erase(path.string()); }

private:
    std::map<std::string, std::shared_ptr<PrimData>> prims_;
};

}  // namespace vrt
