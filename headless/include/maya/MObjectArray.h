#pragma once

#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/detail/array_of.h>

/// A list of objects.
class MObjectArray : public headless::ArrayOf<MObjectArray, MObject> {
public:
    MObjectArray() = default;
    MObjectArray(const MObject source[], unsigned int count) : ArrayOf(source, count) {}
    MObjectArray(unsigned int length, const MObject& value = MObject::kNullObj) : ArrayOf(length, value) {}
    MStatus copy(const MObjectArray& source) {
        *this = source;
        return MStatus::kSuccess;
    }
    MStatus get(MObject out[]) const {
        copy_to(out);
        return MStatus::kSuccess;
    }
};
