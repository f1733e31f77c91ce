#pragma once

#include <maya/detail/array_of.h>

/// A list of unsigned integers.
class MUintArray : public headless::ArrayOf<unsigned int> {
public:
    using ArrayOf::ArrayOf;
};
