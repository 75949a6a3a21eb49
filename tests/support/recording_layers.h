#pragma once
// Host layers and a manipulator that record what the plugin tells them, for
// unit tests of the plugin's layers.

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "host/host_layer.h"
#include "host/manipulator.h"
#include "host/plugin_host.h"

namespace testing_support {

/// Keeps every option it is given, in order; answers getOption from `answers`.
class RecordingLayer : public sorrel::HostLayer {
public:
    using HostLayer::HostLayer;
    void setOption(std::uint64_t id, sorrel::AttrRef value) override {
        received.emplace_back(sorrel::OptionIdGenerator::instance().nameOf(id), std::move(value));
    }
    sorrel::AttrRef getOption(std::uint64_t id) override {
        ++getCount;
        const std::string name = sorrel::OptionIdGenerator::instance().nameOf(id);
        for (const auto& [key, value] : answers)
            if (key == name) return value;
        return {};
    }
    /// The values received under one option name.
    std::vector<sorrel::AttrRef> valuesOf(const std::string& name) const {
        std::vector<sorrel::AttrRef> values;
        for (const auto& [key, value] : received)
            if (key == name) values.push_back(value);
        return values;
    }

    std::vector<std::pair<std::string, sorrel::AttrRef>> received;
    std::vector<std::pair<std::string, sorrel::AttrRef>> answers;
    int getCount = 0;
};

class RecordingHandle : public sorrel::ManipulatorHandle {
public:
    void setOption(std::uint64_t id, sorrel::AttrRef value) override {
        received.emplace_back(sorrel::OptionIdGenerator::instance().nameOf(id), std::move(value));
    }
    std::vector<std::pair<std::string, sorrel::AttrRef>> received;
};

class RecordingManipulator : public sorrel::Manipulator {
public:
    explicit RecordingManipulator(std::size_t handleCount)
        : Manipulator("GLBeamwrightManipulator"), handles(handleCount) {}
    std::uint32_t numberOfHandles() const override {
        return static_cast<std::uint32_t>(handles.size());
    }
    sorrel::ManipulatorHandle* handle(std::uint32_t i) override {
        return i < handles.size() ? &handles[i] : nullptr;
    }
    std::vector<RecordingHandle> handles;
};

}  // namespace testing_support
