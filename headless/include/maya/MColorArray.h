#pragma once

#include <maya/MColor.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/detail/array_of.h>

/// A list of colours.
class MColorArray : public headless::ArrayOf<MColorArray, MColor> {
public:
    MColorArray() = default;
    MColorArray(const MColor source[], unsigned int count) : ArrayOf(source, count) {}
    MColorArray(unsigned int length, const MColor& value = MColor::kOpaqueBlack) : ArrayOf(length, value) {}
    MStatus copy(const MColorArray& source) {
        *this = source;
        return MStatus::kSuccess;
    }
};
