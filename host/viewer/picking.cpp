#include "host/viewer/picking.h"

#include <GL/glew.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>

#include "host/core/plugin_objects.h"
#include "host/viewer/gl_pass_timer.h"
#include "host/viewer/gl_surface.h"
#include "host/viewer/viewport.h"

namespace sorrel {

namespace {

constexpr int kChannels = 4;
constexpr int kBitsPerChannel = 8;
constexpr std::uint64_t kChannelMask = 0xff;
/// Bit position of red, the highest channel of the id's low 32 bits.
constexpr int kRedShift = (kChannels - 1) * kBitsPerChannel;
/// What the pass leaves as GL found it, the framebuffer bindings apart.
constexpr GLbitfield kPassAttributes =
    GL_VIEWPORT_BIT | GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_ENABLE_BIT | GL_SCISSOR_BIT;

/// The part of `area` inside a `width` x `height` viewport, y still from the top.
PickArea clipped(const PickArea& area, std::int32_t width, std::int32_t height) {
    const std::int32_t left = std::max(area.x, 0);
    const std::int32_t top = std::max(area.y, 0);
    // An area far outside the viewport must not overflow on its way there.
    const auto right =
        static_cast<std::int32_t>(std::min<std::int64_t>(std::int64_t{area.x} + area.width, width));
    const auto bottom = static_cast<std::int32_t>(
        std::min<std::int64_t>(std::int64_t{area.y} + area.height, height));
    return {left, top, std::max(right - left, 0), std::max(bottom - top, 0)};
}

/// Clears colour to 0 (no id) and depth to 1, with nothing in the way of exact colours.
void prepareState(std::int32_t width, std::int32_t height) {
    glViewport(0, 0, width, height);
    glDisable(GL_SCISSOR_TEST);
    glDisable(GL_BLEND);
    glDisable(GL_DITHER);
    glDisable(GL_MULTISAMPLE);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LESS);
    glDepthMask(GL_TRUE);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
    glClearDepth(1.0);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

/// The nearest depth of each id within `area` of the bound framebuffer.
std::map<std::uint64_t, float> readIds(const PickArea& area, std::int32_t viewportHeight) {
    const std::size_t pixelCount = static_cast<std::size_t>(area.width) * area.height;
    std::vector<std::uint8_t> colours(pixelCount * kChannels);
    std::vector<float> depths(pixelCount);
    const GLint glY = viewportHeight - area.y - area.height;  // GL counts rows from the bottom
    glReadPixels(area.x, glY, area.width, area.height, GL_RGBA, GL_UNSIGNED_BYTE, colours.data());
    glReadPixels(area.x, glY, area.width, area.height, GL_DEPTH_COMPONENT, GL_FLOAT, depths.data());

    std::map<std::uint64_t, float> nearest;
    for (std::size_t i = 0; i < pixelCount; ++i) {
        const std::uint8_t* const rgba = &colours[i * kChannels];
        const std::uint64_t id = pickIdOf({rgba[0], rgba[1], rgba[2], rgba[3]});
        if (id == 0) continue;
        const auto [entry, added] = nearest.emplace(id, depths[i]);
        if (!added) entry->second = std::min(entry->second, depths[i]);
    }
    return nearest;
}

/// What a picker pass changes, given back when the pass ends, also when a
/// layer throws through it: the GL state, the framebuffer bindings, and the
/// viewport's ids, which live for one pass so that an earlier pass's cannot match.
class PassState {
public:
    explicit PassState(Viewport& viewport) : viewport_(viewport) {
        glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &previousDraw_);
        glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING, &previousRead_);
        glPushAttrib(kPassAttributes);
        viewport_.clearPickedAttrs();
    }
    ~PassState() {
        viewport_.clearPickedAttrs();
        glPopAttrib();
        glBindFramebuffer(GL_DRAW_FRAMEBUFFER, static_cast<GLuint>(previousDraw_));
        glBindFramebuffer(GL_READ_FRAMEBUFFER, static_cast<GLuint>(previousRead_));
    }
    PassState(const PassState&) = delete;
    PassState& operator=(const PassState&) = delete;

private:
    Viewport& viewport_;
    GLint previousDraw_ = 0;
    GLint previousRead_ = 0;
};

}  // namespace

std::array<std::uint8_t, 4> pickColourOf(std::uint64_t id) {
    std::array<std::uint8_t, 4> colour{};
    for (int channel = 0; channel < kChannels; ++channel)
        colour[channel] = static_cast<std::uint8_t>(
            (id >> (kRedShift - channel * kBitsPerChannel)) & kChannelMask);
    return colour;
}

std::uint64_t pickIdOf(const std::array<std::uint8_t, 4>& colour) {
    std::uint64_t id = 0;
    for (const std::uint8_t channel : colour) id = (id << kBitsPerChannel) | channel;
    return id;
}

PickArea pixelOfPoint(const Viewport& viewport, const Vec3& world) {
    const Matrix viewProjection = multiplyMatrices(viewport.view, viewport.projection);
    const Vec3 ndc = transformPoint(world, viewProjection);
    // Normalised device coordinates span 2 over each side; rows count from the top.
    const double x = (ndc.x + 1.0) / 2.0 * viewport.width;
    const double y = (1.0 - ndc.y) / 2.0 * viewport.height;
    return {static_cast<std::int32_t>(std::floor(x)), static_cast<std::int32_t>(std::floor(y))};
}

AttrRef pickedGroup(const std::vector<PickHit>& hits) {
    if (hits.empty()) return AttrRef();
    std::vector<std::pair<std::string, AttrRef>> children;
    children.reserve(hits.size());
    for (const PickHit& hit : hits) children.emplace_back(std::to_string(hit.id), hit.attribute);
    return groupAttr(std::move(children));
}

Picking::Picking(Viewport& viewport, const GLSurface& context)
    : viewport_(viewport), context_(context) {}

Picking::~Picking() {
    if (installed_) viewport_.setPickHandler(nullptr);
    releaseTarget();
}

void Picking::pass(const PickArea& area, const std::vector<LayerObject*>& layers,
                   const AttrRef& excluded, const std::function<void()>& read,
                   const std::vector<PickHit>& hits) {
    context_.makeCurrent();
    prepareTarget();
    const auto drawAndRead = [&] {
        const PassState restored(viewport_);
        glBindFramebuffer(GL_FRAMEBUFFER, framebuffer_);
        prepareState(viewport_.width, viewport_.height);
        for (LayerObject* layer : layers)
            layer->pickerDraw(area.x, area.y, area.width, area.height, excluded);
        read();
    };
    if (!observer_) return drawAndRead();
    const double seconds = finishedSeconds(drawAndRead);
    observer_({std::vector<const LayerObject*>(layers.begin(), layers.end()), hits, seconds});
}

std::vector<PickHit> Picking::pick(const PickArea& area, const std::vector<LayerObject*>& layers,
                                   const AttrRef& excluded) {
    const PickArea inside = clipped(area, viewport_.width, viewport_.height);
    if (inside.width == 0 || inside.height == 0) return {};
    std::vector<PickHit> hits;
    pass(
        area, layers, excluded,
        [&] {
            for (const auto& [id, depth] : readIds(inside, viewport_.height)) {
                // A colour that no layer registered is no object.
                if (const AttrRef* attribute = viewport_.pickedAttr(id))
                    hits.push_back({id, *attribute, depth});
            }
        },
        hits);
    return hits;
}

PickImage Picking::pickImage() {
    const std::int32_t width = viewport_.width;
    const std::int32_t height = viewport_.height;
    std::vector<LayerObject*> layers;
    viewport_.forEachPluginLayer([&layers](LayerObject& layer) { layers.push_back(&layer); });
    PickImage image;
    std::vector<std::uint64_t>& ids = image.ids;
    ids.assign(static_cast<std::size_t>(width) * height, 0);
    pass({0, 0, width, height}, layers, AttrRef(), [&] {
        std::vector<std::uint8_t> colours(ids.size() * kChannels);
        glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, colours.data());
        for (std::size_t i = 0; i < ids.size(); ++i) {
            const std::uint8_t* const rgba = &colours[i * kChannels];
            const std::uint64_t id = pickIdOf({rgba[0], rgba[1], rgba[2], rgba[3]});
            // GL counts rows from the bottom.
            const std::size_t row = height - 1 - i / width;
            const AttrRef* const object = viewport_.pickedAttr(id);
            if (object == nullptr) continue;
            ids[row * width + i % width] = id;
            image.objects.emplace(id, *object);
        }
    });
    return image;
}

std::vector<PickHit> Picking::pickAll(const PickArea& area, const AttrRef& excluded) {
    std::vector<LayerObject*> layers;
    viewport_.forEachPluginLayer([&layers](LayerObject& layer) { layers.push_back(&layer); });
    return pick(area, layers, excluded);
}

void Picking::install() {
    viewport_.setPickHandler([this](const std::string& layerName, std::int32_t x, std::int32_t y,
                                    std::int32_t w, std::int32_t h, bool, float* depth) {
        return answer(layerName, {x, y, w, h}, depth);
    });
    installed_ = true;
}

AttrRef Picking::answer(const std::string& layerName, const PickArea& area, float* depth) {
    LayerObject* const layer = viewport_.pluginLayer(layerName);
    if (layer == nullptr) return AttrRef();
    const std::vector<PickHit> hits = pick(area, {layer});
    if (hits.empty()) return AttrRef();
    if (depth != nullptr) {
        *depth = std::min_element(hits.begin(), hits.end(), [](const PickHit& a, const PickHit& b) {
                     return a.depth < b.depth;
                 })->depth;
    }
    return pickedGroup(hits);
}

void Picking::prepareTarget() {
    if (framebuffer_ != 0 && targetWidth_ == viewport_.width && targetHeight_ == viewport_.height)
        return;
    releaseTarget();
    targetWidth_ = viewport_.width;
    targetHeight_ = viewport_.height;
    glGenRenderbuffers(1, &colourBuffer_);
    glBindRenderbuffer(GL_RENDERBUFFER, colourBuffer_);
    glRenderbufferStorage(GL_RENDERBUFFER, GL_RGBA8, targetWidth_, targetHeight_);
    glGenRenderbuffers(1, &depthBuffer_);
    glBindRenderbuffer(GL_RENDERBUFFER, depthBuffer_);
    glRenderbufferStorage(GL_RENDERBUFFER, GL_DEPTH_COMPONENT24, targetWidth_, targetHeight_);
    glBindRenderbuffer(GL_RENDERBUFFER, 0);

    GLint previous = 0;
    glGetIntegerv(GL_FRAMEBUFFER_BINDING, &previous);
    glGenFramebuffers(1, &framebuffer_);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer_);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, colourBuffer_);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_RENDERBUFFER, depthBuffer_);
    glBindFramebuffer(GL_FRAMEBUFFER, static_cast<GLuint>(previous));
}

void Picking::releaseTarget() {
    if (framebuffer_ == 0) return;
    context_.makeCurrent();
    glDeleteFramebuffers(1, &framebuffer_);
    glDeleteRenderbuffers(1, &colourBuffer_);
    glDeleteRenderbuffers(1, &depthBuffer_);
    framebuffer_ = colourBuffer_ = depthBuffer_ = 0;
}

}  // namespace sorrel
