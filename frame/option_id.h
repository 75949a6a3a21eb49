#pragma once
// Option names turned into the host's 64-bit identifiers.
//
// getOptionId does not cache per name: each call site with a fixed name keeps
// the identifier in a function-local static, e.g.
//     static const OptionId kEnabled = getOptionId(kEnabledOption);
// so that the path of an event compares numbers, not text.

#include "frame/abi/boundary_types.h"

namespace Tessera::Sorrel::ViewerAPI {

/// The identifier of an option name, from the host's generator. A successful
/// setHost with a host that has kOptionIdGeneratorSuite is a precondition.
OptionId getOptionId(const char* name);

}  // namespace Tessera::Sorrel::ViewerAPI
