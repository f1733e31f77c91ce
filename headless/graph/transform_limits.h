#pragma once

#include "headless/graph/plug.h"

#include <vector>

namespace headless {

class EvaluationContext;

/// A bound on one of the nine values translate, rotate and scale, that is on, or that something may turn on.
struct TransformLimit {
    std::uint8_t field; ///< three each for translate, rotate, scale
    bool upper = false;
    double bound = 0.0;
    Plug enabled_by, bound_by; ///< plugs that are driven; null for what is merely stored

    bool operator==(const TransformLimit&) const = default;
};

/// The limits of a transform.
std::vector<TransformLimit> limits_of(Node& transform);
/// The value held to the limit, if the limit is on.
double limited(EvaluationContext& context, const TransformLimit& limit, double value);

} // namespace headless
