#pragma once
// The picking machinery of one viewport: plugin layers draw their objects in
// colours that encode pick ids (`pickerDraw`) into an offscreen framebuffer;
// the colours read back become ids again, and the ids the attributes that the
// layers registered with `addPickedAttr`, each with the nearest depth of its
// pixels. Installed as the viewport's pick handler, it answers the layers'
// `pick` calls by a picker pass of the asking layer.

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "host/core/attribute_ref.h"
#include "host/viewer/vec3.h"

namespace sorrel {

class GLSurface;
class LayerObject;
class Viewport;

/// The RGBA8 colour that stands for a pick id: bits 31..24 red, 23..16 green,
/// 15..8 blue, 7..0 alpha.
std::array<std::uint8_t, 4> pickColourOf(std::uint64_t id);
/// The pick id of a colour read back; 0, the cleared background, for none.
std::uint64_t pickIdOf(const std::array<std::uint8_t, 4>& colour);

/// A rectangle of the viewport in pixels, y counted from the top.
struct PickArea {
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t width = 1;
    std::int32_t height = 1;
};

/// The pixel in which a world point lands, x from the left and y from the top,
/// by the viewport's view and projection: where to pick to find an object there.
/// The point must lie in front of the eye.
PickArea pixelOfPoint(const Viewport& viewport, const Vec3& world);

/// One object under a picking area.
struct PickHit {
    std::uint64_t id = 0;
    /// What the layer handed to addPickedAttr for the id.
    AttrRef attribute;
    /// Nearest window depth among the object's pixels: 0 near, 1 far.
    float depth = 1.0f;
};

/// The hits as a pick answers them: a group with one child for each id, named
/// by the id in decimal; null when there is none.
AttrRef pickedGroup(const std::vector<PickHit>& hits);

/// The id under every pixel of a viewport, rows from the top, 0 where no
/// registered object is; and what the layers registered for each id.
struct PickImage {
    std::vector<std::uint64_t> ids;
    std::map<std::uint64_t, AttrRef> objects;
};

/// One picker pass as it went, for a viewer that shows the picking at work.
struct PickPass {
    std::vector<const LayerObject*> layers;  // drawn, in this order
    /// By ascending id; empty for a pass over the whole viewport.
    std::vector<PickHit> hits;
    /// Wall clock from the first GL call to the pixels read back, GL finished.
    double seconds = 0.0;
};

class Picking {
public:
    using PassObserver = std::function<void(const PickPass&)>;

    /// Renders with `context`, which it makes current for each pass; the
    /// framebuffer follows the viewport's size.
    Picking(Viewport& viewport, const GLSurface& context);
    /// Deletes the framebuffer (the context must still exist) and takes the
    /// pick handler back if this object installed it.
    ~Picking();
    Picking(const Picking&) = delete;
    Picking& operator=(const Picking&) = delete;

    /// One picker pass of `layers` in their order, the picking group `excluded`
    /// lent to each; the hits inside `area`, by ascending id.
    std::vector<PickHit> pick(const PickArea& area, const std::vector<LayerObject*>& layers,
                              const AttrRef& excluded = AttrRef());
    /// One picker pass of all plugin layers of the viewport.
    std::vector<PickHit> pickAll(const PickArea& area, const AttrRef& excluded = AttrRef());
    /// One picker pass of all plugin layers over the whole viewport, read
    /// back pixel by pixel.
    PickImage pickImage();

    /// Makes this the viewport's pick handler: a plugin layer that asks is
    /// answered by its own picker pass, the host's layers by nothing. The depth
    /// is written only when something was hit.
    void install();

    /// Calls `observer` after each pass from now on; null for none. An
    /// observed pass waits for GL to finish before it starts, to be timed.
    void observePasses(PassObserver observer) { observer_ = std::move(observer); }

private:
    /// Draws `layers` into the framebuffer and calls `read` while it is bound;
    /// tells the observer, if any, with `hits`, which `read` fills.
    void pass(const PickArea& area, const std::vector<LayerObject*>& layers,
              const AttrRef& excluded, const std::function<void()>& read,
              const std::vector<PickHit>& hits = {});
    AttrRef answer(const std::string& layerName, const PickArea& area, float* depth);
    /// Makes the framebuffer at the viewport's size, anew when that changed.
    void prepareTarget();
    void releaseTarget();

    Viewport& viewport_;
    const GLSurface& context_;
    unsigned int framebuffer_ = 0;
    unsigned int colourBuffer_ = 0;
    unsigned int depthBuffer_ = 0;
    std::int32_t targetWidth_ = 0;
    std::int32_t targetHeight_ = 0;
    bool installed_ = false;
    PassObserver observer_;
};

}  // namespace sorrel
