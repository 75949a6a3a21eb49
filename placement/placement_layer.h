#pragma once
// BeamwrightLayer: turns mouse events into light placements and packages.

#include "frame/viewport_layer.h"

class BeamwrightLayer : public Tessera::Sorrel::ViewerAPI::ViewportLayer {
public:
    BeamwrightLayer() : ViewportLayer(/* layerFlag = */ false) {}

    void setup() override {}
    void cleanup() override {}
    void draw() override {}
    void resize(std::int32_t, std::int32_t) override {}
    void hostSignalA() override {}
    void hostSignalB() override {}
};
