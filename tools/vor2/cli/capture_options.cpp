#include "tools/vor2/cli/capture_options.h"

namespace tool {

void CaptureOptions::describe(Syntax& syntax) {
    syntax.number("--bvh-unit", "CM", "what a unit of a .bvh file is in centimetres (default 1)", unit_);
    syntax.choice("--bvh-up", {"y", "z"}, "which axis of a .bvh file points up: y (the default) or z", up_);
}

std::string CaptureOptions::check() const {
    return unit_ && !(*unit_ > 0) ? "--bvh-unit: the unit must be above 0" : "";
}

} // namespace tool
