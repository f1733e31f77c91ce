#pragma once

#include <maya/detail/array_of.h>

/// A list of integers.
class MIntArray : public headless::ArrayOf<int> {
public:
    using ArrayOf::ArrayOf;
};
