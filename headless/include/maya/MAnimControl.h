#pragma once

#include <maya/MAngle.h>
#include <maya/MDoubleArray.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MIntArray.h>
#include <maya/MStatus.h>
#include <maya/MTime.h>
#include <maya/MTimeArray.h>
#include <maya/MTypes.h>

/// The clock and the playback range.
class MAnimControl {
public:
    static MTime currentTime();
    static MStatus setCurrentTime(const MTime& time);
    static MTime minTime();
    static MTime maxTime();
    static MTime animationStartTime();
    static MTime animationEndTime();
    static MStatus setMinTime(MTime time);
    static MStatus setMaxTime(MTime time);
    static MStatus setAnimationStartTime(MTime time);
    static MStatus setAnimationEndTime(MTime time);
    static MStatus setMinMaxTime(MTime min, MTime max);
    static MStatus setAnimationStartEndTime(MTime start, MTime end);
};
