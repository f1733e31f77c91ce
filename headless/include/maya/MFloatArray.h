#pragma once

#include <maya/detail/array_of.h>

/// A list of single-precision numbers.
class MFloatArray : public headless::ArrayOf<float> {
public:
    using ArrayOf::ArrayOf;
};
