#pragma once

#include <maya/detail/array_of.h>

/// A list of numbers.
class MDoubleArray : public headless::ArrayOf<double> {
public:
    using ArrayOf::ArrayOf;
};
