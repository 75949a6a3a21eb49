#pragma once
// The tour's results as a table on a terminal: for each mode the pixel, the
// point and normal the plugin was given, and where the light went.

#include <cstdio>

#include "apps/viewer/tour.h"

namespace viewer {

void printModeTable(std::FILE* out, const TourReport& report);

}  // namespace viewer
