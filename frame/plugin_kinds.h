#pragma once
// The catalogue of viewer object kinds: each kind's name and version, and the
// host table (name, version, layout) that its classes ask for. The two
// versions of a kind are independent of each other.

#include <cstdint>

#include "frame/abi/manipulator_host_suites.h"
#include "frame/abi/viewer_delegate_component_host_suite.h"
#include "frame/abi/viewer_delegate_host_suite.h"
#include "frame/abi/viewport_camera_host_suite.h"
#include "frame/abi/viewport_host_suite.h"
#include "frame/abi/viewport_layer_host_suite.h"
#include "frame/frame_names.h"
#include "frame/plugin_base_of.h"

namespace Tessera::Sorrel::ViewerAPI {

// ---- the kinds this plugin implements ----

struct ViewportLayerKind {
    static constexpr const char* apiName = Names::kViewportLayerKind;
    static constexpr std::uint32_t apiVersion = 2;
    static constexpr const char* hostSuiteName = Names::kViewportLayerHostSuite;
    static constexpr unsigned int hostSuiteVersion = 2;
    using HostSuite = ViewportLayerHostSuite;
};
struct ViewerDelegateComponentKind {
    static constexpr const char* apiName = Names::kViewerDelegateComponentKind;
    static constexpr std::uint32_t apiVersion = 2;
    static constexpr const char* hostSuiteName = Names::kViewerDelegateComponentHostSuite;
    static constexpr unsigned int hostSuiteVersion = 2;
    using HostSuite = ViewerDelegateComponentHostSuite;
};

// ---- the kinds this plugin only wraps ----

struct ViewerDelegateKind {
    static constexpr const char* apiName = Names::kViewerDelegateKind;
    static constexpr std::uint32_t apiVersion = 3;
    static constexpr const char* hostSuiteName = Names::kViewerDelegateHostSuite;
    static constexpr unsigned int hostSuiteVersion = 4;
    using HostSuite = ViewerDelegateHostSuite;
};
struct ViewportCameraKind {
    static constexpr const char* apiName = Names::kViewportCameraKind;
    static constexpr std::uint32_t apiVersion = 2;
    static constexpr const char* hostSuiteName = Names::kViewportCameraHostSuite;
    static constexpr unsigned int hostSuiteVersion = 2;
    using HostSuite = ViewportCameraHostSuite;
};
struct ViewportKind {
    static constexpr const char* apiName = Names::kViewportKind;
    static constexpr std::uint32_t apiVersion = 2;
    static constexpr const char* hostSuiteName = Names::kViewportHostSuite;
    static constexpr unsigned int hostSuiteVersion = 3;
    using HostSuite = ViewportHostSuite;
};
struct ManipulatorKind {
    static constexpr const char* apiName = Names::kManipulatorKind;
    static constexpr std::uint32_t apiVersion = 2;
    static constexpr const char* hostSuiteName = Names::kManipulatorHostSuite;
    static constexpr unsigned int hostSuiteVersion = 2;
    using HostSuite = ManipulatorHostSuite;
};
struct ManipulatorHandleKind {
    static constexpr const char* apiName = Names::kManipulatorHandleKind;
    static constexpr std::uint32_t apiVersion = 1;
    static constexpr const char* hostSuiteName = Names::kManipulatorHandleHostSuite;
    static constexpr unsigned int hostSuiteVersion = 1;
    using HostSuite = ManipulatorHandleHostSuite;
};

class ViewerDelegatePluginBase : public PluginBaseOf<ViewerDelegateKind> {};
class ViewportCameraPluginBase : public PluginBaseOf<ViewportCameraKind> {};
class ViewportPluginBase : public PluginBaseOf<ViewportKind> {};
class ManipulatorPluginBase : public PluginBaseOf<ManipulatorKind> {};
class ManipulatorHandlePluginBase : public PluginBaseOf<ManipulatorHandleKind> {};

}  // namespace Tessera::Sorrel::ViewerAPI
