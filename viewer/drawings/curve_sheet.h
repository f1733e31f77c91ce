#pragma once

/// Curves over time as one SVG picture: a lane for each track, one under the other, on one axis of time.

#include <string>
#include <vector>

namespace vor2::viewer {

struct Curve {
    std::string name; ///< "x"; empty for the only one of a lane
    std::vector<double> times, values;
    std::vector<std::size_t> keys; ///< which of the points are keys
    bool dashed = false;           ///< of the other scene
};

struct Lane {
    std::string title, unit;
    std::vector<Curve> curves;
};

struct CurveSheet {
    std::string title, legend;
    double start = 0, end = 0; ///< seconds
    std::vector<Lane> lanes;
};

/// The picture as text. Light or dark as its reader's system has it; texts are told as texts, whatever they hold.
std::string svg_of(const CurveSheet& sheet);

} // namespace vor2::viewer
