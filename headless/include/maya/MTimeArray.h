#pragma once

#include <maya/MStatus.h>
#include <maya/MTime.h>
#include <maya/detail/array_of.h>

/// A list of times.
class MTimeArray : public headless::ArrayOf<MTimeArray, MTime> {
public:
    MTimeArray() = default;
    MTimeArray(const MTime source[], unsigned int count) : ArrayOf(source, count) {}
    MTimeArray(unsigned int length, const MTime& value) : ArrayOf(length, value) {}
    MStatus copy(const MTimeArray& source) {
        *this = source;
        return MStatus::kSuccess;
    }
    MStatus get(MTime out[]) const {
        copy_to(out);
        return MStatus::kSuccess;
    }
};
