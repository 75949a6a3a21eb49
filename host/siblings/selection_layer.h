#pragma once
// "SelectionLayer": the host's selection tool in the viewport. The placement
// layer tells it through "BeamwrightSelectionMode" whether light placement is
// on; the layer keeps what it heard.

#include <cstdint>
#include <optional>

#include "host/core/names.h"
#include "host/viewer/host_layer.h"

namespace sorrel {

class SelectionLayer : public HostLayer {
public:
    SelectionLayer() : HostLayer(names::kSelectionLayer) {}

    void setOption(std::uint64_t id, AttrRef value) override;
    AttrRef getOption(std::uint64_t) override { return AttrRef(); }

    /// The latest "BeamwrightSelectionMode", or nothing when it was no integer.
    std::optional<std::int32_t> selectionMode() const { return selectionMode_; }

private:
    std::optional<std::int32_t> selectionMode_;
};

}  // namespace sorrel
