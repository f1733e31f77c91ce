#pragma once

#include <maya/MObject.h>
#include <maya/detail/array_of.h>

/// A list of handles.
class MObjectArray : public headless::ArrayOf<MObject> {
public:
    using ArrayOf::ArrayOf;
};
