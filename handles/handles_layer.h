#pragma once
// BeamwrightCOIHandlesLayer: draws an arrow at each light's centre of interest.

#include "frame/viewport_layer.h"

class BeamwrightCOIHandlesLayer : public Tessera::Sorrel::ViewerAPI::ViewportLayer {
public:
    BeamwrightCOIHandlesLayer() : ViewportLayer(/* layerFlag = */ false) {}

    void setup() override {}
    void cleanup() override {}
    void draw() override {}
    void resize(std::int32_t, std::int32_t) override {}
    void hostSignalA() override {}
    void hostSignalB() override {}
};
