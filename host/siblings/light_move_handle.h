#pragma once
// One handle of "GLBeamwrightManipulator": it stands for one selected light
// and moves it when the placement layer sends "LightData".
//
// "LightData" is a group of "position" and "direction" (three doubles each,
// world space), "distance", "strictPosition" and "orientationFixed". The
// light goes to "position"; unless "orientationFixed" is non-zero its local
// -Z axis turns to "direction" (Y kept near world up). The new world matrix is
// brought into the light's local space through its parent's world transform,
// and the host reports the move as a transform change. A positive "distance"
// becomes the light's "geometry.centerOfInterest", so that its centre of
// interest lands on the point the light was placed for; the host then reports
// changed attributes too. A null or malformed "LightData" leaves the light
// where it is; so does a zero direction for the orientation.
// "CurrentModifiers" is only recorded.
//
// Before each move the handle asks the placement layer's flags (see
// manipulator_flags.h): with "PositionLocked" the light stays where it stands;
// with "FixedRotation" it moves without turning, as with "orientationFixed".

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "host/siblings/manipulator_flags.h"
#include "host/viewer/manipulator.h"

namespace sorrel {

class ViewerDelegate;

/// What the handles of one manipulator have received, for tests and the demo.
struct LightMoveCounts {
    std::uint64_t lightData = 0;                // "LightData" options received
    std::uint64_t nullLightData = 0;            // of them, null or malformed
    std::uint64_t moves = 0;                    // lights moved and reported
    std::uint64_t held = 0;                     // "LightData" refused: the position is locked
    std::uint64_t modifiers = 0;                // "CurrentModifiers" options received
    std::optional<std::int32_t> lastModifiers;  // nothing when the latest was no integer
};

class LightMoveHandle : public ManipulatorHandle {
public:
    /// Asked for the placement layer's flags at each move.
    using FlagSource = std::function<ManipulatorFlags()>;

    LightMoveHandle(ViewerDelegate& delegate, std::string lightPath, LightMoveCounts& counts,
                    FlagSource flags = nullptr)
        : delegate_(delegate),
          lightPath_(std::move(lightPath)),
          counts_(counts),
          flags_(std::move(flags)) {}

    const std::string& lightPath() const { return lightPath_; }
    void setOption(std::uint64_t id, AttrRef value) override;

private:
    /// False when the data or the light's transforms do not allow a move.
    bool moveLight(const AttrRef& lightData);
    /// Sets the centre of interest from "distance"; false when it gives none.
    bool aimAtDistance(const AttrRef& lightData);

    ViewerDelegate& delegate_;
    std::string lightPath_;
    LightMoveCounts& counts_;
    FlagSource flags_;
};

}  // namespace sorrel
