#pragma once
// BeamwrightLayer: the viewport layer through which a user places lights. It
// draws nothing; it keeps a placement mode and a few defaults, hands every
// option on to its sibling layers, and turns mouse events into placements for
// the manipulator and package commands for the viewer delegate (the names it
// sends and reads are in placement/placement_names.h).

#include <string>

#include "frame/viewport_layer.h"
#include "placement/light_placement.h"
#include "placement/placement_mode.h"

namespace Tessera::Sorrel::ViewerAPI {
class ViewerDelegateWrapper;
}

class BeamwrightLayer : public Tessera::Sorrel::ViewerAPI::ViewportLayer {
public:
    using Attribute = Tessera::Sorrel::ViewerAPI::Attribute;
    using GroupAttribute = Tessera::Sorrel::ViewerAPI::GroupAttribute;
    using OptionId = Tessera::Sorrel::ViewerAPI::OptionId;
    using PlacementMode = Tessera::Sorrel::ViewerUtils::PlacementMode;
    using LightPlacement = Tessera::Sorrel::ViewerUtils::LightPlacement;

    static constexpr double kInitialDistance = 5.0;

    BeamwrightLayer() : ViewportLayer(/* layerFlag = */ false) {}

    void setup() override {}
    void cleanup() override {}
    bool event(const GroupAttribute& event) override;
    void draw() override {}
    void resize(std::int32_t, std::int32_t) override {}
    void hostSignalA() override {}
    void hostSignalB() override {}
    void setOption(OptionId id, Attribute value) override;
    Attribute getOption(OptionId id) override;

    /// Asks the snapping layer what lies under the cursor (the event's pixel
    /// attributes, passed on unread) and places a light there by `mode`.
    LightPlacement computePlacement(const Attribute& x, const Attribute& y, double distance,
                                    double shadowFallDistance);

    bool isEnabled() const { return enabled; }
    PlacementMode placementMode() const { return mode; }

private:
    /// A Shift left press: creates (or clones) a package under the cursor.
    /// True when the package was requested.
    bool runPackageCommand(const Attribute& x, const Attribute& y,
                           const Tessera::Sorrel::ViewerAPI::ViewerDelegateWrapper& delegate);
    void setEnabled(bool value);
    void setMode(const std::string& label);

    bool enabled = false;
    PlacementMode mode = PlacementMode::ModeNone;
    std::string packageClassName;
    std::string marquetteNodeName;
    /// From the picked point to the light, world units.
    double defaultDistance = kInitialDistance;
    double defaultShadowFallDistance = kInitialDistance;
};
