#pragma once

#include <maya/MPoint.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/detail/array_of.h>

/// A list of points.
class MPointArray : public headless::ArrayOf<MPointArray, MPoint> {
public:
    MPointArray() = default;
    MPointArray(const MPoint source[], unsigned int count) : ArrayOf(source, count) {}
    MPointArray(unsigned int length, const MPoint& value = MPoint::origin) : ArrayOf(length, value) {}
    MStatus copy(const MPointArray& source) {
        *this = source;
        return MStatus::kSuccess;
    }
};
