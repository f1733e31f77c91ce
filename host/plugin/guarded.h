#pragma once

#include <maya/MGlobal.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <exception>
#include <new>

namespace VOR2_EXPORTER_MAYA {

/// Does the work of an entry point and gives its status. Nothing may be thrown into the host, whose own library of
/// exceptions is another than ours: what is thrown becomes a message and a failure.
template<class WORK>
MStatus guarded(WORK work) {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        MGlobal::displayError("Out of memory");
        return MStatus::kInsufficientMemory;
    } catch (const std::exception& thrown) {
        MGlobal::displayError(MString("Unexpected: ") + thrown.what());
    } catch (...) {
        MGlobal::displayError("Unexpected failure");
    }
    return MStatus::kFailure;
}

} // namespace VOR2_EXPORTER_MAYA
