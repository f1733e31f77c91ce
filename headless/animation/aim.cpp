#include "headless/animation/aim.h"

#include "headless/animation/rotation_blend.h"

namespace headless {
namespace {

// Rows: the direction, what is left of `up` square to it, and the third.
Matrix frame(const Vector3& direction, const Vector3& up) {
    Matrix out;
    out.set_row(0, direction);
    out.set_row(1, up);
    out.set_row(2, cross(direction, up));
    return rotation_part(out);
}

} // namespace

Matrix aim_rotation(const Aim& aim) {
    if (length(aim.axis) == 0.0 || length(aim.direction) == 0.0) return {};
    return inverse(frame(aim.axis, aim.up_axis)) * frame(aim.direction, aim.up);
}

Matrix shortest_turn(const Vector3& from, const Vector3& to) {
    if (length(from) == 0.0 || length(to) == 0.0) return {};
    // The line square to both is an axis that the turn leaves alone.
    const Vector3 fixed = cross(from, to);
    return inverse(frame(from, fixed)) * frame(to, fixed);
}

} // namespace headless
