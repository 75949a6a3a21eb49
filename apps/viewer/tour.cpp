#include "apps/viewer/tour.h"

#include <GL/glew.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "apps/scene/atomic_file.h"
#include "apps/scene/placement_modes.h"
#include "apps/viewer/light_poses.h"
#include "apps/viewer/number_text.h"
#include "apps/viewer/pick_colours.h"
#include "apps/viewer/picture_file.h"
#include "apps/viewer/viewer_session.h"
#include "host/core/attribute_reading.h"
#include "host/core/names.h"
#include "host/render/scene_renderer.h"
#include "host/viewer/gl_context.h"
#include "host/viewer/mouse_event.h"
#include "host/viewer/picking.h"
#include "host/viewer/ray_cast.h"
#include "host/viewer/selection.h"
#include "host/viewer_stage.h"

namespace viewer {

namespace names = sorrel::names;

using sorrel::Vec3;

namespace {

/// Where the handles layer reads its shaders below $SORREL_ROOT.
constexpr const char* kHandleShaderStem =
    "/plugins/Resources/Core/Shaders/TransformManipulators/Manipulators.";
constexpr const char* kHandleShaderExtensions[] = {"vert", "geom", "frag"};
/// How far "Normal" drags when the scene names no pixel to drag to, in pixels.
constexpr Pixel kDefaultDrag = {40, -20};
constexpr const char* kPlacingMode = "Normal";

std::string pixelText(const Pixel& pixel) {
    return "(" + std::to_string(pixel[0]) + ", " + std::to_string(pixel[1]) + ")";
}

/// The location a picked object names.
std::optional<std::string> locationOf(const sorrel::AttrRef& object) {
    return sorrel::readString(object.child(names::kPickedLocation));
}

std::string quoted(const std::string& label) { return "\"" + modeTitle(label) + "\""; }

std::string twoDigits(std::size_t number) {
    char text[8];
    std::snprintf(text, sizeof text, "%02zu", number);
    return text;
}

class Tour {
public:
    Tour(ViewerSession& session, const sorrel::GLContext& context, std::string folder)
        : session_(session), context_(context), folder_(std::move(folder)) {}

    TourReport run() {
        report_.light = chooseLight();
        session_.stage().select({report_.light});
        session_.setOption(names::kEnabled, sorrel::intAttr(1));
        restingPlace_ = scene().find(report_.light)->local;
        for (const PlacementModeLabel& mode : kPlacementModes) placeIn(mode);
        putLightBack();
        hoverHandle();
        pictureThePicking();
        createPackage();
        return report_;
    }

private:
    sorrel::Scene& scene() { return session_.stage().scene(); }
    sorrel::Viewport& viewport() { return session_.viewport(); }

    std::string chooseLight() {
        const TourDescription& tour = session_.scene().tour;
        if (tour.light) {
            const sorrel::Location* location = scene().find(*tour.light);
            if (location == nullptr || !sorrel::hasType(*location, names::kLightType))
                throw TourFailure("the tour's light " + *tour.light + " is no light location");
            return *tour.light;
        }
        const std::vector<std::string> selected = sorrel::selectedPaths(scene());
        for (const std::string& path : selected)
            if (sorrel::hasType(*scene().find(path), names::kLightType)) return path;
        // Else the first light location in the order the file gives them.
        const std::vector<LightDescription>& lights = session_.scene().lights;
        if (lights.empty()) throw TourFailure("the scene has no light location to place");
        return lights.front().path;
    }

    /// The pixel whose ray meets a mesh at that mesh's own centre, nearest the view's centre.
    Pixel defaultPress() {
        std::optional<Pixel> best;
        double bestDistance = 0.0;
        for (const auto& [name, mesh] : scene().meshes()) {
            const Vec3 centre = mesh.boundsCentre();
            const sorrel::PickArea pixel = sorrel::pixelOfPoint(viewport(), centre);
            const auto ray = sorrel::rayThroughPixel(viewport(), pixel.x, pixel.y);
            const auto hit = ray ? sorrel::castRay(scene(), *ray) : std::nullopt;
            if (!hit || hit->mesh != name) continue;
            const double distance =
                std::hypot(pixel.x - viewport().width / 2.0, pixel.y - viewport().height / 2.0);
            if (!best || distance < bestDistance)
                best = Pixel{pixel.x, pixel.y}, bestDistance = distance;
        }
        if (!best)
            throw TourFailure(
                "no object of the scene lies under its own centre's pixel; "
                "give \"tour\": {\"press\": [x, y]}");
        return *best;
    }

    Pixel pressPixel(const std::string& label) {
        const TourDescription& tour = session_.scene().tour;
        const auto byMode = tour.pressByMode.find(label);
        if (byMode != tour.pressByMode.end()) return byMode->second;
        if (!press_) press_ = tour.press ? *tour.press : defaultPress();
        return *press_;
    }

    void putLightBack() { session_.stage().delegate().moveLocation(report_.light, restingPlace_); }

    void placeIn(const PlacementModeLabel& mode) {
        putLightBack();
        const std::string label = mode.label;
        session_.setOption(names::kMode, sorrel::stringAttr(label));
        const LightPose before = lightPoses(scene()).at(report_.light);
        sorrel::SnappingLayer& snapping = session_.stage().snappingLayer();
        snapping.forgetAnswer();

        Pixel pixel = pressPixel(label);
        session_.sendEvent(sorrel::leftPress(pixel[0], pixel[1]));
        if (label == kPlacingMode) {
            const TourDescription& tour = session_.scene().tour;
            pixel = tour.drag ? *tour.drag
                              : Pixel{pixel[0] + kDefaultDrag[0], pixel[1] + kDefaultDrag[1]};
            session_.sendEvent(sorrel::leftDrag(pixel[0], pixel[1]));
        }
        session_.sendEvent(sorrel::leftRelease(pixel[0], pixel[1]));

        ModeStep step;
        step.label = label;
        step.pixel = pixel;
        if (const auto& answer = snapping.lastAnswer())
            step.point = answer->point, step.normal = answer->normal;
        const LightPose after = lightPoses(scene()).at(report_.light);
        step.position = after.position;
        step.aim = after.aim;
        step.moved = differ(before, after);
        step.flags = session_.stage().manipulator().flags();
        report_.modes.push_back(step);

        const std::string where = quoted(label) + " at " + pixelText(pixel);
        if (mode.movesLight && !step.moved)
            throw TourFailure(where + " did not move " + report_.light +
                              (step.point ? "" : " (no object under that pixel)"));
        if (!mode.movesLight && step.moved)
            throw TourFailure(where + " moved " + report_.light + ", though it places nothing");

        const std::size_t number = report_.modes.size();
        writeFrame(twoDigits(number) + "-" + modeSlug(label) + ".png",
                   twoDigits(number) + " " + modeTitle(label), caption(step), pixel);
    }

    /// Where the light went, and what the manipulator's flags made of it.
    std::string caption(const ModeStep& step) {
        std::string text = step.moved                  ? "light to " + fixedTriple(step.position, 1)
                           : step.flags.positionLocked ? "position locked"
                                                       : "nothing moved";
        if (step.moved && step.flags.fixedRotation) text += ", not turned";
        if (step.flags.handleAtOrigin) text += ", handle at origin";
        if (step.flags.shadowHandles)
            text += ", shadow at " +
                    fixed(session_.stage().manipulator().shadowFallDistance(report_.light), 1);
        return text;
    }

    /// A light other than the placed one whose handle is in view; the placed
    /// one itself where it is the only light.
    std::pair<sorrel::SceneLight, Pixel> hoverTarget() {
        const std::optional<std::string>& wanted = session_.scene().tour.hover;
        const std::vector<sorrel::SceneLight> lights = session_.lights();
        const bool alone = lights.size() == 1;
        for (const sorrel::SceneLight& light : lights) {
            if (wanted ? light.path != *wanted : light.path == report_.light && !alone) continue;
            const Vec3 handle = light.position + light.direction * light.centerOfInterest;
            const sorrel::PickArea pixel = sorrel::pixelOfPoint(viewport(), handle);
            if (pixel.x < 0 || pixel.y < 0 || pixel.x >= viewport().width ||
                pixel.y >= viewport().height) {
                if (wanted)
                    throw TourFailure("the handle of " + *wanted + " lies outside the view");
                continue;
            }
            return {light, Pixel{pixel.x, pixel.y}};
        }
        throw TourFailure(wanted ? "the tour's hover light " + *wanted + " is no light"
                                 : "no light but " + report_.light + " has a handle in view");
    }

    void hoverHandle() {
        const auto [light, pixel] = hoverTarget();
        hoverPixel_ = pixel;
        report_.hoveredLight = light.path;
        const std::uint64_t redraws = viewport().dirtyCount();
        session_.sendEvent(sorrel::hover(pixel[0], pixel[1]));
        if (viewport().dirtyCount() == redraws)
            throw TourFailure("hovering the handle of " + light.path + " at " + pixelText(pixel) +
                              " hovered nothing (did the handle shaders build?)");
        writeFrame("13-hover.png", "13 Hover", "line to " + light.path, pixel);
    }

    void pictureThePicking() {
        const Pixel& pixel = hoverPixel_;
        for (const sorrel::PickHit& hit : session_.picking().pickAll({pixel[0], pixel[1]}))
            if (const auto path = locationOf(hit.attribute)) report_.pickedLight = *path;
        if (report_.pickedLight.empty())
            throw TourFailure("picking at " + pixelText(pixel) + " found no handle, though " +
                              report_.hoveredLight + "'s lies there");
        // Where handles crowd, the one on top may belong to a neighbour; a light
        // the scene names must be the one found.
        const std::optional<std::string>& wanted = session_.scene().tour.hover;
        if (wanted && report_.pickedLight != *wanted)
            throw TourFailure("picking at " + pixelText(pixel) + " found " + report_.pickedLight +
                              ", not the handle of " + *wanted);
        const sorrel::PickImage ids = session_.picking().pickImage();
        std::uint64_t picked = 0;
        for (const auto& [id, object] : ids.objects)
            if (locationOf(object) == report_.pickedLight) picked = id;
        context_.makeCurrent();
        session_.renderer().draw(viewport(), scene(), session_.lights(),
                                 &session_.stage().manipulator());
        session_.renderer().drawCursorMarker(viewport(), pixel[0], pixel[1]);
        sorrel::RgbaImage picture = context_.readPixels();
        paintPickIds(picture, ids.ids, picked);
        save(picture, "14-picking.png", "14 Picking", "picked " + report_.pickedLight);
    }

    void createPackage() {
        const TourDescription& tour = session_.scene().tour;
        const Pixel pixel = tour.package ? *tour.package : pressPixel(kPlacingMode);
        const LightPoses before = lightPoses(scene());
        session_.setOption(names::kMode, sorrel::stringAttr(kPlacingMode));
        session_.sendEvent(sorrel::leftPress(pixel[0], pixel[1], names::kShiftModifier));
        session_.sendEvent(sorrel::leftRelease(pixel[0], pixel[1]));
        const std::vector<std::string> added = newLights(before, lightPoses(scene()));
        if (!added.empty()) report_.packageLight = added.back();
        if (report_.packageLight.empty())
            throw TourFailure("Shift with a left press at " + pixelText(pixel) +
                              " created no package");
        writeFrame("15-package.png", "15 Package", "new " + report_.packageLight, pixel);
    }

    void writeFrame(const std::string& file, const std::string& title, const std::string& caption,
                    const Pixel& cursor) {
        context_.makeCurrent();
        session_.drawFrame();
        session_.renderer().drawCursorMarker(viewport(), cursor[0], cursor[1]);
        save(context_.readPixels(), file, title, caption);
    }

    void save(const sorrel::RgbaImage& picture, const std::string& file, const std::string& title,
              const std::string& caption) {
        const std::string path = folder_ + "/" + file;
        try {
            writePicture(path, picture);
        } catch (const FileWriteError& error) {
            throw TourFailure(error.what());
        }
        report_.pictures.push_back({path, picture, title, caption});
    }

    ViewerSession& session_;
    const sorrel::GLContext& context_;
    const std::string folder_;
    TourReport report_;
    sorrel::Matrix restingPlace_ = sorrel::kIdentity;
    std::optional<Pixel> press_;
    Pixel hoverPixel_{};
};

}  // namespace

void checkHandleShaders() {
    const char* const root = std::getenv("SORREL_ROOT");
    const std::string stem = std::string(root != nullptr ? root : "") + kHandleShaderStem;
    for (const char* extension : kHandleShaderExtensions) {
        const std::string path = stem + extension;
        if (!std::ifstream(path))
            throw TourFailure("the handle shaders are missing: no " + path +
                              " (SORREL_ROOT must name the folder above plugins/)");
    }
}

TourReport runTour(ViewerSession& session, const sorrel::GLContext& context,
                   const std::string& folder) {
    checkHandleShaders();
    return Tour(session, context, folder).run();
}

}  // namespace viewer
