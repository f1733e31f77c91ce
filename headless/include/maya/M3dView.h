#pragma once

#include <maya/MStatus.h>

/// A handle of the window system.
typedef void* M3dWindow;

/// The view that the user looks at. The embedded host shows none: there is no window.
class M3dView {
public:
    static M3dView active3dView(MStatus* status = nullptr);
    static M3dWindow applicationShell(MStatus* status = nullptr); ///< null
    MStatus refresh(bool all = false, bool force = false);
};
