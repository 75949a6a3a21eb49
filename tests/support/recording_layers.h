#pragma once
// Host layers and a manipulator that record what the plugin tells them, for
// unit tests of the plugin's layers.

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "host/core/names.h"
#include "host/core/option_id_generator.h"
#include "host/viewer/host_layer.h"
#include "host/viewer/manipulator.h"

namespace testing_support {

/// A host object that keeps every option it is given, by name, in order.
template <typename Base>
class Recording : public Base {
public:
    using Base::Base;
    void setOption(std::uint64_t id, sorrel::AttrRef value) override {
        received.emplace_back(sorrel::OptionIdGenerator::instance().nameOf(id), std::move(value));
    }
    /// The values received under one option name.
    std::vector<sorrel::AttrRef> valuesOf(const std::string& name) const {
        std::vector<sorrel::AttrRef> values;
        for (const auto& [key, value] : received)
            if (key == name) values.push_back(value);
        return values;
    }
    std::vector<std::pair<std::string, sorrel::AttrRef>> received;
};

using RecordingHandle = Recording<sorrel::ManipulatorHandle>;

/// Answers getOption from `answers`.
class RecordingLayer : public Recording<sorrel::HostLayer> {
public:
    using Recording::Recording;
    sorrel::AttrRef getOption(std::uint64_t id) override {
        const std::string name = sorrel::OptionIdGenerator::instance().nameOf(id);
        for (const auto& [key, value] : answers)
            if (key == name) return value;
        return {};
    }
    std::vector<std::pair<std::string, sorrel::AttrRef>> answers;
};

class RecordingManipulator : public sorrel::Manipulator {
public:
    explicit RecordingManipulator(std::size_t handleCount)
        : Manipulator(sorrel::names::kManipulator), handles(handleCount) {}
    std::uint32_t numberOfHandles() const override {
        return static_cast<std::uint32_t>(handles.size());
    }
    sorrel::ManipulatorHandle* handle(std::uint32_t i) override {
        return i < handles.size() ? &handles[i] : nullptr;
    }
    std::vector<RecordingHandle> handles;
};

}  // namespace testing_support
