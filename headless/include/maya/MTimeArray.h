#pragma once

#include <maya/MTime.h>
#include <maya/detail/array_of.h>

/// A list of times.
class MTimeArray : public headless::ArrayOf<MTime> {
public:
    using ArrayOf::ArrayOf;
};
