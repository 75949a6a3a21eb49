#pragma once
// LightLocationData: what the delegate component keeps for one scene location,
// and what a viewport layer reads when it draws a light's handle.

#include <array>
#include <cstdint>
#include <string>

#include "frame/attribute.h"
#include "support/vector_matrix.h"

/// The handle colour of a light that names none: yellow.
inline constexpr std::array<float, 4> kDefaultLightColor = {1.0f, 1.0f, 0.0f, 1.0f};

/// One location's record. Every location the viewer reports has one, lights or
/// not; a USD light has one made at each rebuild of the light list.
///
/// The record owns one reference on each of its two groups. Copying takes a
/// further reference on each; moving hands both on and leaves null behind;
/// assigning retains the new group before it releases the old. The views do
/// all of this, so the record needs no special members of its own.
struct LightLocationData {
    // The fields are in the order they are read, hot before cold: the light
    // list's walk tests the first three of every location, the handle passes
    // read the flags, identity, colour and pose of every light, in the first
    // two cache lines; only an event reads the groups and the world matrix.

    /// Keeps the location off the light list while true.
    bool excluded = true;
    bool isLight = false;
    /// A centre-of-interest handle may be drawn for this location.
    bool showHandle = false;
    /// The location is in the viewer's selection.
    bool selected = false;
    /// The handle takes part in picker drawing.
    bool pickable = false;
    /// First word of the hash of the path's string attribute: a light's identity
    /// across layers and draws.
    std::uint64_t locationHash = 0;
    /// Handle colour: red, green, blue, alpha.
    std::array<float, 4> color = {0.0f, 0.0f, 0.0f, 0.0f};
    /// The centre of interest as a world-space point, not as a distance.
    Tessera::Sorrel::ViewerUtils::Vec3d centerOfInterest;
    /// World-space look direction, of unit length, or zero for a degenerate matrix.
    Tessera::Sorrel::ViewerUtils::Vec3d direction;
    /// World space.
    Tessera::Sorrel::ViewerUtils::Vec3d position;
    /// A group with the single child "location", the path as a string attribute:
    /// the object's identity in the viewer's picking.
    Tessera::Sorrel::ViewerAPI::GroupAttribute pickerObject;
    /// The location's whole attribute group from the latest event that carried one.
    Tessera::Sorrel::ViewerAPI::GroupAttribute attributes;
    /// World transformation (row vectors, translation in elements 12 to 14).
    Tessera::Sorrel::ViewerUtils::Mat4d worldMatrix;
};

/// The picking identity of a location: a group whose single child "location" is
/// the path as a string attribute.
Tessera::Sorrel::ViewerAPI::GroupAttribute makePickerObject(const std::string& locationPath);

/// Derives locationHash from `pickerObject`, and position and direction from
/// `worldMatrix`: what every record takes from its identity and its place,
/// whether it stands for a location or a USD prim.
void updateIdentityAndPose(LightLocationData& data);

/// Derives isLight, showHandle, pickable, locationHash, position, direction,
/// centerOfInterest and color from `attributes`, `pickerObject` and `worldMatrix`.
/// Leaves excluded, pickerObject, attributes, worldMatrix and selected alone.
/// A null `attributes` reads as a location without any attribute. Idempotent.
void updateLightLocationData(LightLocationData& data);
