#pragma once
// Every wrapper through which the plugin sees the viewer's objects.

#include "frame/manipulator_handle_wrapper.h"
#include "frame/manipulator_wrapper.h"
#include "frame/viewer_delegate_component_wrapper.h"
#include "frame/viewer_delegate_wrapper.h"
#include "frame/viewport_camera_wrapper.h"
#include "frame/viewport_layer_wrapper.h"
#include "frame/viewport_wrapper.h"
