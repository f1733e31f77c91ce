#pragma once

/// The work that both sides of the comparison do: the sizes, the times that a clock steps through, and where it
/// jumps to.

#include <cmath>

namespace bench {

inline constexpr int POSED_JOINTS = 100; ///< in chains of ten
inline constexpr int POSED_KEYS = 600;   ///< a track; at 60 a second
inline constexpr float POSED_SECONDS = (POSED_KEYS - 1) / 60.0F;
inline constexpr int SKINNED_VERTICES = 50000;
inline constexpr int BONES_A_VERTEX = 4;

/// Steps forward by a frame of a display that runs at another rate than the keys, and starts again at the end.
class STEPS {
public:
    explicit STEPS(float length) : my_length(length) {}
    float next() {
        my_time += 1.0F / 75.0F;
        if (my_time > my_length) my_time -= my_length;
        return my_time;
    }

private:
    float my_length, my_time = 0;
};

/// Jumps anywhere; the same places at every run.
class JUMPS {
public:
    explicit JUMPS(float length) : my_length(length) {}
    float next() {
        my_state = my_state * 1664525U + 1013904223U;
        return static_cast<float>(my_state >> 8) / 16777216.0F * my_length;
    }

private:
    float my_length;
    unsigned my_state = 1;
};

} // namespace bench
