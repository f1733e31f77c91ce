#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

/// When nodes are evaluated: as a rule at the scene's own time.
class MDGContext {
public:
    bool isNormal(MStatus* status = nullptr) const;

    static MDGContext fsNormal;
};
