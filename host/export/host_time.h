#pragma once

#include <maya/MPlug.h>
#include <maya/MTime.h>

namespace VOR2_EXPORTER_MAYA {

/// Frames per second of the host's unit of time, which is asked for by name. "min" is taken as 0.01666
/// a second, in single precision. A unit outside the list of names ("hour", "120fps") has the rate that
/// the host's own times give it. Where that is no positive number either, the user is told
/// "Unknown time unit: NAME", nothing is written and the result is false.
[[nodiscard]] bool current_fps(double& fps);

/// Moves the host's clock by its time node, not by the view. Making one selects the node alone.
class TIME_NODE_CLOCK {
public:
    TIME_NODE_CLOCK();
    void move_to(MTime time);

private:
    MPlug my_out_time;
};

/// A time as a number of frames of the host's unit.
[[nodiscard]] MTime time_of_frame(double frame);

} // namespace VOR2_EXPORTER_MAYA
