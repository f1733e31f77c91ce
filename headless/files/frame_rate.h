#pragma once

#include "headless/graph/units.h"

namespace headless {

/// The steps in which a file's frames follow each other, and the time unit that shows them best.
struct FrameRate {
    TimeUnit unit;
    double per_second = 24.0; ///< the unit's own where a unit matches
};

/// Which rate a frame time stands for. A file rounds it (".0083333", "0.0333"), so a whole or a television rate
/// whose frame time, rounded or cut to the digits written or to single precision, is the stated one is taken for it,
/// and each frame falls on a whole step of the unit; where few digits leave a choice, one that the host has a unit for.
/// Any other time is kept exactly, with the nearest unit of the host around it.
/// `last_digit` is what one unit of the last digit written is worth. A frame time of 0 gives film.
FrameRate frame_rate(double frame_time, double last_digit);

} // namespace headless
