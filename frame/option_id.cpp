#include "frame/option_id.h"

#include "frame/frame_names.h"
#include "frame/host_suite_registry.h"

using namespace Tessera::Sorrel::Names;

namespace Tessera::Sorrel::ViewerAPI {

namespace {

// Filled by whoever comes first with the same values; no lock is needed.
void* cachedGenerator = nullptr;

const OptionIdGeneratorHostSuite* generatorSuite() {
    HostSuiteRegistry& suites = hostSuiteRegistry();
    if (suites.optionIdGenerator == nullptr && suites.optionIdGeneratorHost != nullptr) {
        void* suite = nullptr;
        fetchHostSuite(suites.optionIdGeneratorHost, kOptionIdGeneratorSuite, 1, &suite);
        suites.optionIdGenerator = static_cast<const OptionIdGeneratorHostSuite*>(suite);
    }
    return suites.optionIdGenerator;
}

}  // namespace

OptionId getOptionId(const char* name) {
    if (cachedGenerator == nullptr) cachedGenerator = generatorSuite()->getGenerator();
    return generatorSuite()->generateId(cachedGenerator, name);
}

}  // namespace Tessera::Sorrel::ViewerAPI
