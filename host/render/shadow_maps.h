#pragma once
// Depth maps seen from spot lights, one layer of a texture array each, that
// the lit pass samples with depth comparison. The object owns its GL names:
// the context it was made in must be current when it is destroyed.

namespace sorrel {

class ShadowMaps {
public:
    /// `layers` maps of `size` x `size` texels.
    ShadowMaps(int size, int layers);
    ~ShadowMaps();
    ShadowMaps(const ShadowMaps&) = delete;
    ShadowMaps& operator=(const ShadowMaps&) = delete;

    /// Renders into `layer` from now on: binds it, sets the viewport, clears depth.
    void beginLayer(int layer) const;
    /// Gives the framebuffer and viewport back as they were before the first beginLayer.
    void end(int previousFramebuffer, const int previousViewport[4]) const;
    /// Binds the maps to texture unit `unit`.
    void bind(int unit) const;

private:
    int size_;
    unsigned int texture_ = 0;
    unsigned int framebuffer_ = 0;
};

}  // namespace sorrel
