#pragma once

#include "headless/graph/transform.h"

namespace headless {

/// What evaluation keeps with a DAG node, so that a sample costs its driven values and two matrix products: the
/// stored values in one piece, the list of driven ones, and the matrices as last worked out.
struct TransformState {
    /// A driven value: its place (see `field_of`), what drives it, and the plug it arrives at.
    struct Input {
        std::uint8_t field;
        Plug source;
        PlugKey destination;
    };

    std::uint64_t edits = 0; ///< edit count of the node that `stored` and `inputs` were read at
    TransformValues stored;
    bool stored_inherits = true;
    std::vector<Input> inputs;
    bool scale_of_parent = false; ///< compensation takes out what the parent joint's scale is at the time

    TransformValues values;
    bool inherits = true;
    bool busy = false;        ///< its values are being worked out; asking again is a cycle
    bool local_valid = false; ///< `local` follows from `values`
    std::uint64_t values_generation = 0, world_generation = 0;
    Matrix local, world;
};

} // namespace headless
