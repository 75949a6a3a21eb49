#pragma once
// A layer for tests that does nothing but what a test overrides.

#include "frame/viewport_layer.h"

namespace testing_support {

class QuietLayer : public Tessera::Sorrel::ViewerAPI::ViewportLayer {
public:
    QuietLayer() : ViewportLayer(/* layerFlag = */ false) {}
    void setup() override {}
    void cleanup() override {}
    void draw() override {}
    void resize(std::int32_t, std::int32_t) override {}
    void hostSignalA() override {}
    void hostSignalB() override {}
};

}  // namespace testing_support
