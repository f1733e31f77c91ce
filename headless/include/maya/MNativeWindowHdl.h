#pragma once

#include <maya/MTypes.h>

/// A window of the system's own.
#if defined(_WIN32)
struct HWND__;
typedef HWND__* HWND;
typedef HWND MNativeWindowHdl;
#else
typedef unsigned long Window;
typedef Window MNativeWindowHdl;
#endif
