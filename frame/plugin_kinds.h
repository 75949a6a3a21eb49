#pragma once
// The catalogue of viewer object kinds: each kind's name and version, and the
// host table (name, version) that its classes ask for. The two versions of a
// kind are independent of each other.

#include <cstdint>

#include "frame/host_api.h"

namespace Tessera::Sorrel::ViewerAPI {

/// The base of a kind's classes: one static host pointer for the whole kind.
template <typename Kind>
class PluginBaseOf {
public:
    static constexpr const char* apiName = Kind::apiName;
    static constexpr std::uint32_t apiVersion = Kind::apiVersion;
    static constexpr const char* kHostSuiteName = Kind::hostSuiteName;
    static constexpr unsigned int kHostSuiteVersion = Kind::hostSuiteVersion;

    /// Null until the kind's first wrapper (or setHost) sets it.
    inline static PluginHost* pluginHost = nullptr;

    virtual ~PluginBaseOf() = default;
};

struct ViewerDelegateKind {
    static constexpr const char* apiName = "ViewerDelegatePlugin";
    static constexpr std::uint32_t apiVersion = 3;
    static constexpr const char* hostSuiteName = "ViewerDelegateHost";
    static constexpr unsigned int hostSuiteVersion = 4;
};
struct ViewportCameraKind {
    static constexpr const char* apiName = "ViewportCameraPlugin";
    static constexpr std::uint32_t apiVersion = 2;
    static constexpr const char* hostSuiteName = "ViewportCameraHost";
    static constexpr unsigned int hostSuiteVersion = 2;
};
struct ViewportKind {
    static constexpr const char* apiName = "ViewportPlugin";
    static constexpr std::uint32_t apiVersion = 2;
    static constexpr const char* hostSuiteName = "ViewportHost";
    static constexpr unsigned int hostSuiteVersion = 3;
};
struct ManipulatorKind {
    static constexpr const char* apiName = "ManipulatorPlugin";
    static constexpr std::uint32_t apiVersion = 2;
    static constexpr const char* hostSuiteName = "ManipulatorHost";
    static constexpr unsigned int hostSuiteVersion = 2;
};
struct ManipulatorHandleKind {
    static constexpr const char* apiName = "ManipulatorHandlePlugin";
    static constexpr std::uint32_t apiVersion = 1;
    static constexpr const char* hostSuiteName = "ManipulatorHandleHost";
    static constexpr unsigned int hostSuiteVersion = 1;
};

class ViewerDelegatePluginBase : public PluginBaseOf<ViewerDelegateKind> {};
class ViewportCameraPluginBase : public PluginBaseOf<ViewportCameraKind> {};
class ViewportPluginBase : public PluginBaseOf<ViewportKind> {};
class ManipulatorPluginBase : public PluginBaseOf<ManipulatorKind> {};
class ManipulatorHandlePluginBase : public PluginBaseOf<ManipulatorHandleKind> {};

}  // namespace Tessera::Sorrel::ViewerAPI
