#pragma once

#include <maya/MFloatVector.h>
#include <maya/detail/array_of.h>

/// A list of single-precision vectors.
class MFloatVectorArray : public headless::ArrayOf<MFloatVector> {
public:
    using ArrayOf::ArrayOf;
};
