#pragma once

/// What makes a scene file wrong in use, beyond numbers that aren't finite: indices that name nothing, parents
/// behind their children, keys out of order or out of step, rotations that aren't of unit length, weights that
/// don't add up, files that aren't there.

#include "format/vor2.h"

#include <functional>
#include <string>

namespace vor2::inspect {

struct Finding {
    std::string record;    ///< "rigids[2]", "matrix_hierarchy.nodes[5]", "environment"
    std::u16string name;   ///< the record's own name, where it has one
    std::string field;     ///< "sub_objects[0].triangles[7].second"
    std::string value;     ///< what stands there
    std::string complaint; ///< what is wrong with it
};

/// Tells each finding in file order, indices first, then keys; gives how many there were. `file_name` is the
/// scene's, in the library's form: references are looked for beside it. Of scenes within the scene only the numbers are
/// looked at.
std::uint64_t check_strictly(const VOR2_LOADER::VOR2& scene, const VOR2_LOADER::TEXT& file_name,
                             const std::function<void(const Finding&)>& tell);

} // namespace vor2::inspect
