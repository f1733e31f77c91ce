#pragma once

#include "headless/graph/transform.h"
#include "headless/graph/transform_limits.h"

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

    /// A node that turns this joint without a connection to it, and the joint's place among those that it turns.
    struct Turning {
        Node* by;
        std::size_t place;
    };

    std::uint64_t edits = 0; ///< edit count of the node that `stored` and `inputs` were read at
    TransformValues stored;
    bool stored_inherits = true;
    std::vector<Input> inputs;
    std::vector<TransformLimit> limits;
    bool scale_of_parent = false; ///< compensation takes out what the parent joint's scale is at the time

    std::vector<Turning> turned_by; ///< in the order in which they act

    TransformValues values;
    Vector3 unturned; ///< rotate as stored or driven, where the joint is turned
    bool inherits = true;
    bool busy = false;        ///< its values are being worked out; asking again is a cycle
    bool turning = false;     ///< what turns it is being asked; asking again is a cycle
    bool local_valid = false; ///< `local` follows from `values`
    std::uint64_t inputs_generation = 0, values_generation = 0, world_generation = 0;
    Matrix local, world;
};

} // namespace headless
