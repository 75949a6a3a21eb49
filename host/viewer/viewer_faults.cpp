#include "host/viewer/viewer_faults.h"

namespace sorrel {

ViewerFaults& viewerFaults() {
    static ViewerFaults faults;
    return faults;
}

}  // namespace sorrel
