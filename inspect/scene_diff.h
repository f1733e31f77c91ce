#pragma once

/// What differs between two scenes, by record, index and field.

#include "format/vor2.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vor2::inspect {

struct Difference {
    std::string record;               ///< "inf", "matrix_hierarchy.nodes", "rigids"
    std::optional<std::size_t> index; ///< of the element of that list
    std::u16string name;              ///< the element's own name in the first scene, where it has one
    std::string field;                ///< "position_track.key_values[5]"; empty for the record itself
    std::string first, second;        ///< the values as `dump` tells them
};

struct DiffOptions {
    double tolerance = 0;             ///< by how much two numbers that aren't whole may differ
    std::vector<std::string> ignored; ///< records or fields left out, such as "inf.file_info"
};

/// Tells each difference in file order; gives how many there were. Lists are compared element by element at the same
/// index; those of the longer one that the other lacks are told as one difference, in the number of elements. Two
/// NaNs agree, and so do 0 and -0. Of objects of different classes only the class is told.
std::uint64_t compare_scenes(const VOR2_LOADER::VOR2& first, const VOR2_LOADER::VOR2& second,
                             const DiffOptions& options, const std::function<void(const Difference&)>& tell);

} // namespace vor2::inspect
