#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/detail/held.h>

class MString;

/// A file by name. Names come out with forward slashes; one without a folder is in the current one.
class MFileObject {
public:
    MStatus setRawName(const MString& name);         ///< the file's own name
    MStatus setRawPath(const MString& path);         ///< its folder
    MStatus setRawFullName(const MString& fullName); ///< both
    MStatus setName(const MString& name);
    MStatus setFullName(const MString& fullName);
    MString rawName() const;
    MString rawPath() const;
    MString rawFullName() const;
    MString name() const;
    MString path() const;     ///< with a slash at its end
    MString fullName() const; ///< from the root of the file system
    MString resolvedName() const;
    MString resolvedPath() const;
    MString resolvedFullName() const;
    bool exists();

private:
    headless::Held<MString> path_, name_;
};
