#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/detail/array_of.h>

class MDagPath;

/// A list of paths.
class MDagPathArray : public headless::ArrayOf<MDagPathArray, MDagPath> {
public:
    MDagPathArray() = default;
    MDagPathArray(unsigned int length, const MDagPath& value) : ArrayOf(length, value) {}
    MStatus copy(const MDagPathArray& source) {
        *this = source;
        return MStatus::kSuccess;
    }
};
