#pragma once

#include <maya/MColor.h>
#include <maya/MNativeWindowHdl.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

/// The view that the user looks at. The embedded host shows none: there is no window.
class M3dView {
public:
    static M3dView active3dView(MStatus* status = nullptr);
    static MNativeWindowHdl applicationShell(MStatus* status = nullptr); ///< 0
    MStatus refresh(bool all = false, bool force = false);
};
